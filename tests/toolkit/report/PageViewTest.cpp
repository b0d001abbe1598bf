#include "toolkit/report/preview/PageView.h"

#include <QtWidgets/QPlainTextEdit>

#include "toolkit/report/PreviewFixture.h"

namespace tavoline {
namespace {

using PageViewTest = PreviewTest;

TEST_F(PageViewTest, fingersPinchAndDrag) {
  open(80);
  QWidget* view = pages().viewport();
  static QPointingDevice* const screen = QTest::createTouchDevice();
  const auto pinch = [&](int from, int to) {
    const QPoint middle = view->rect().center();
    const auto at = [&](int apart) { return middle + QPoint(apart / 2, 0); };
    QTest::touchEvent(view, screen).press(0, at(-from), view).press(1, at(from), view);
    for (int i = 1; i <= 10; ++i) {
      const int apart = from + (to - from) * i / 10;
      QTest::touchEvent(view, screen).move(0, at(-apart), view).move(1, at(apart), view);
    }
    QTest::touchEvent(view, screen).release(0, at(-to), view).release(1, at(to), view);
    QApplication::processEvents();
  };
  pinch(100, 300);  // the first twentieth of it tells that it is one
  EXPECT_NEAR(pages().zoom(), 2.5, 0.001);
  pinch(300, 100);
  EXPECT_NEAR(pages().zoom(), 2.5 * 100 / 280, 0.001);

  const auto drag = [&](const char* tool) {
    action(tool)->trigger();
    pages().setZoom(1);
    pages().goTo(1);
    const double before = pages().deskPoint({0, 0}).y();
    QTest::touchEvent(view, screen).press(0, QPoint(450, 400), view);
    for (int y = 390; y >= 200; y -= 10) {
      QTest::touchEvent(view, screen).move(0, QPoint(450, y), view);
      QApplication::processEvents();
    }
    QTest::touchEvent(view, screen).release(0, QPoint(450, 200), view);
    const auto way = [&] { return pages().deskPoint({0, 0}).y() - before; };
    const bool scrolls = pages().tool() != PageView::Tool::Select;
    EXPECT_TRUE(!scrolls || QTest::qWaitFor([&] { return way() >= 100; })) << tool;
    return way();
  };
  drag("Hand");
  drag("ZoomTool");
  EXPECT_EQ(pages().zoom(), 1) << "a drag is no tap";
  drag("Edit");
  EXPECT_EQ(pages().findChild<QPlainTextEdit*>("pageTextEditor"), nullptr);
  EXPECT_EQ(drag("Select"), 0);
  EXPECT_TRUE(pages().selectedText().startsWith("ligne 24\nligne 25\n")) << "the strokes of a finger select";
  action("ZoomTool")->trigger();
  QTest::touchEvent(view, screen).press(0, QPoint(300, 500), view);
  QTest::touchEvent(view, screen).release(0, QPoint(300, 500), view);
  EXPECT_TRUE(QTest::qWaitFor([this] { return pages().zoom() > 1; }));
}

TEST_F(PageViewTest, manyPagesAreNotManyPictures) {
  open(13000);
  ASSERT_GT(panel_.document()->pageCount(), 700U);
  for (std::size_t page = 0; page < 50; ++page) {
    pages().goTo(page * 14);
    pages().viewport()->grab();
  }
  EXPECT_LE(pages().picturesKept(), 6U);
  EXPECT_GT(pages().picturesKept(), 0U);
}

TEST_F(PageViewTest, aTextIsCorrectedInItsPlace) {
  open(3);
  action("Edit")->trigger();
  const auto edit = [this](const char* typed, Qt::Key end) {
    QTest::mouseClick(pages().viewport(), Qt::LeftButton, {}, viewPoint(0, 100, 70).toPoint());
    auto* editor = pages().findChild<QPlainTextEdit*>("pageTextEditor");
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, typed);
    QTest::keyClick(editor, end);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  edit("dropped", Qt::Key_Escape);
  EXPECT_EQ(panel_.document()->page(0).text(2), "ligne 1");
  edit("corrected", Qt::Key_Return);
  EXPECT_EQ(panel_.document()->page(0).text(2), "corrected");
  EXPECT_EQ(panel_.document()->page(0).text(5), "ligne 2");
  EXPECT_FALSE(pages().editAt(viewPoint(0, 300, 300))) << "nothing is written there";

  // By the keyboard alone: Enter opens the last one again, Tab goes on, to the next page too.
  const auto typed = [this](const char* text, Qt::Key end) {
    auto* editor = pages().findChild<QPlainTextEdit*>("pageTextEditor");
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, end);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  QTest::keyClick(&pages(), Qt::Key_Return);
  typed("again", Qt::Key_Tab);
  typed("remark", Qt::Key_Backtab);
  typed("at last", Qt::Key_Return);
  EXPECT_EQ(panel_.document()->page(0).text(2), "at last");
  EXPECT_EQ(panel_.document()->page(0).text(3), "remark");
}

}  // namespace
}  // namespace tavoline
