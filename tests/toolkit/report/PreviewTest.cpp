#include "toolkit/report/Preview.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtPrintSupport/QPrinter>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolButton>

#include "Samples.h"
#include "data/value/Errors.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/DocumentFile.h"
#include "toolkit/report/PageView.h"

namespace tavoline {
namespace {

using report::sampleDocument;

class PreviewTest : public testing::Test {
 protected:
  PreviewTest() {
    Messages::current().show = [this](const std::string& text) { shown_.push_back(text); };
    Messages::current().saveFile = [this](const std::string&, const std::string&) { return file_; };
    Messages::current().openFile = [this](const std::string&, const std::string&) { return file_; };
    panel_.resize(900, 700);
    panel_.show();
  }
  ~PreviewTest() override {
    Messages::current() = Messages::real();
    report::PrintSystem::current() = report::PrintSystem::real();
  }

  void open(int rows) { panel_.open({std::make_shared<report::Document>(sampleDocument(rows)), {}, {}, {}}); }
  QAction* action(const char* name) { return panel_.findChild<QAction*>(name); }
  QToolButton* button(const char* name) { return panel_.findChild<QToolButton*>(name); }
  PageView& pages() { return panel_.pages(); }
  std::string hitText() {
    return pages().hit() ? std::string(panel_.document()->page(pages().hit()->page).text(pages().hit()->word))
                         : "";
  }
  QPointF viewPoint(std::size_t page, double x, double y) {  // units on the page
    return pages().pageRect(page).topLeft() + QPointF(x, y) * pages().zoom() - pages().deskPoint({0, 0});
  }

  QTemporaryDir folder_;
  std::string file_ = folder_.filePath("a").toStdString();
  std::vector<std::string> shown_;
  PreviewPanel panel_;
};

TEST_F(PreviewTest, pagesThroughByButtonsNumberAndKeys) {
  open(80);
  auto* number = panel_.findChild<QSpinBox*>("PageNumber");
  ASSERT_EQ(panel_.document()->pageCount(), 5U);
  EXPECT_EQ(number->maximum(), 5);
  EXPECT_FALSE(button("PriorPage")->isEnabled());
  QTest::mouseClick(button("NextPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 2);
  QTest::mouseClick(button("LastPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 5);
  EXPECT_FALSE(button("NextPage")->isEnabled());
  QTest::mouseClick(button("PriorPage"), Qt::LeftButton);
  EXPECT_EQ(number->value(), 4);
  number->setValue(3);
  EXPECT_EQ(pages().currentPage(), 2U);
  panel_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  pages().setFocus();
  QTest::keyClick(&pages(), Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(pages().currentPage(), 0U);
}

TEST_F(PreviewTest, zoomsInStepsToTheWholePageAndToItsWidth) {
  open(30);
  EXPECT_EQ(pages().zoom(), 1);
  action("ZoomIn")->trigger();
  EXPECT_DOUBLE_EQ(pages().zoom(), 1.25);
  action("ZoomOut")->trigger();
  EXPECT_DOUBLE_EQ(pages().zoom(), 1);
  action("PageWidth")->trigger();
  EXPECT_NEAR(pages().pageRect(0).width(), pages().viewport()->width() - 32, 1);
  action("WholePage")->trigger();
  EXPECT_NEAR(pages().pageRect(0).height(), pages().viewport()->height() - 32, 1);
  const double before = pages().zoom();
  panel_.resize(900, 400);
  QApplication::processEvents();
  EXPECT_LT(pages().zoom(), before) << "a fitted page stays fitted";
  for (int i = 0; i < 40; ++i) action("ZoomIn")->trigger();
  EXPECT_DOUBLE_EQ(pages().zoom(), PageView::kLargest);
}

TEST_F(PreviewTest, manyPagesAreNotManyPictures) {
  open(13000);
  ASSERT_GT(panel_.document()->pageCount(), 700U);
  for (std::size_t page = 0; page < 50; ++page) {
    pages().goTo(page * 14);
    pages().viewport()->grab();
  }
  EXPECT_LE(pages().picturesKept(), 6U);
  EXPECT_GT(pages().picturesKept(), 0U);
}

TEST_F(PreviewTest, findsAcrossPages) {
  open(30);
  action("Find")->trigger();
  auto* text = panel_.findChild<QLineEdit*>("FindText");
  EXPECT_TRUE(text->isVisible());
  QTest::keyClicks(text, "ligne 3");
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(hitText(), "ligne 3");
  QTest::mouseClick(button("FindNext"), Qt::LeftButton);
  EXPECT_EQ(hitText(), "ligne 30");
  EXPECT_EQ(pages().currentPage(), 1U);
  QTest::mouseClick(button("FindPrevious"), Qt::LeftButton);
  EXPECT_EQ(hitText(), "ligne 3");
  text->setText("absent");
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(shown_, std::vector<std::string>{"« absent » ne se trouve pas dans ce document."});
  QTest::keyClick(text, Qt::Key_Escape);
  EXPECT_FALSE(text->isVisible());
}

TEST_F(PreviewTest, theOutlineLeadsToPages) {
  open(30);
  action("Outline")->trigger();
  auto* list = panel_.findChild<QListView*>("OutlineList");
  ASSERT_TRUE(list->isVisible());
  ASSERT_EQ(list->model()->rowCount(), 3);
  EXPECT_EQ(list->model()->index(1, 0).data().toString(), "Page 2 : 15 ligne 15");
  Q_EMIT list->clicked(list->model()->index(2, 0));
  EXPECT_EQ(pages().currentPage(), 2U);
}

TEST_F(PreviewTest, selectedTextIsCopied) {
  open(30);
  action("Select")->trigger();
  QTest::mousePress(pages().viewport(), Qt::LeftButton, {}, viewPoint(0, 10, 62).toPoint());
  QTest::mouseMove(pages().viewport(), viewPoint(0, 150, 90).toPoint());
  QTest::mouseRelease(pages().viewport(), Qt::LeftButton, {}, viewPoint(0, 150, 98).toPoint());
  action("Copy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "1\tligne 1\n2\tligne 2\n");
  action("Hand")->trigger();
  EXPECT_FALSE(pages().hasSelection());
  pages().goTo(2);
  action("Copy")->trigger();
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith("Total : 465\n"))
      << "the page at hand without a selection";
}

TEST_F(PreviewTest, aTextIsCorrectedInItsPlace) {
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
}

TEST_F(PreviewTest, anotherPaperTakesTheSamePages) {
  open(30);
  report::PageSetup setup = panel_.document()->setup();
  setup.height = 297;
  panel_.applySetup(setup);
  EXPECT_EQ(panel_.document()->pageCount(), 1U);
  EXPECT_EQ(panel_.findChild<QSpinBox*>("PageNumber")->maximum(), 1);
}

TEST_F(PreviewTest, savesAndOpensPages) {
  open(30);
  const std::string before = panel_.document()->dump();
  action("Save")->trigger();
  open(1);
  file_ += ".pages";
  action("Load")->trigger();
  EXPECT_EQ(panel_.document()->dump(), before);
  EXPECT_TRUE(shown_.empty());

  file_ = folder_.filePath("missing.pages").toStdString();
  action("Load")->trigger();
  EXPECT_EQ(shown_.size(), 1U);
  file_ = folder_.filePath("no/folder/a").toStdString();
  action("Save")->trigger();
  EXPECT_EQ(shown_.size(), 2U);
  EXPECT_EQ(panel_.document()->dump(), before) << "the preview stays";
}

TEST_F(PreviewTest, printsThroughTheDialogAndToAPdfWithoutPrinters) {
  open(30);
  int asked = 0;
  report::PrintSystem::current() = {[] { return true; },
                                    [&](QPrinter& printer, QWidget*) {
                                      ++asked;
                                      printer.setOutputFileName(folder_.filePath("printed.pdf"));
                                      return true;
                                    }};
  action("Print")->trigger();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(QFile::exists(folder_.filePath("printed.pdf")));

  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  report::PrintSystem::current().hasPrinter = [] { return false; };
  action("Print")->trigger();
  action("QuickExport")->trigger();
  QDir::setCurrent(before);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(QDir(folder_.filePath("impressions")).entryList({"Essai *.pdf"}).size(), 2);
  ASSERT_EQ(shown_.size(), 2U);
  EXPECT_THAT(shown_[0], testing::HasSubstr("Aucune imprimante"));
}

TEST_F(PreviewTest, offersWhatTheTemplateAsksFor) {
  auto document = std::make_shared<report::Document>(sampleDocument(1));
  auto plain = std::make_shared<report::Template>(document->report());
  plain->previewButtons = report::ButtonPrint | report::ButtonFind;
  auto other = std::make_shared<report::Document>(plain, nullptr);
  other->append(*document);
  panel_.open({other, {}, {}, {}});
  EXPECT_TRUE(action("Print")->isVisible());
  EXPECT_TRUE(action("Find")->isVisible());
  for (const char* absent : {"Copy", "Select", "Edit", "Save", "ZoomIn", "Outline"})
    EXPECT_FALSE(action(absent)->isVisible()) << absent;
  EXPECT_FALSE(panel_.findChild<QWidget*>("Navigator")->isVisible());
  EXPECT_FALSE(panel_.findChild<QPushButton*>("ClosePreview")->isVisible())
      << "a panel of a screen is not closed";
}

// Rows for a document that takes many turns of the event loop.
struct LongBuild {
  explicit LongBuild(int count)
      : rows(report::sampleRows(count)), renderer(report::sampleTemplate(), {&rows}, {}) {}
  report::Build build() {
    return {renderer.document(), [this] { return renderer.advance(); },
            [this] { return renderer.recordsRead(); }, [this] { return renderer.recordCount(); }};
  }
  report::Rows rows;
  report::Renderer renderer;
};

TEST_F(PreviewTest, aLongDocumentGrowsWhileItIsShownAndCanBeInterrupted) {
  // However fast the machine, the work is not done before the user has had his turn.
  LongBuild work(40000);
  int steps = 0;
  report::Build unending = work.build();
  unending.advance = [&] { return ++steps > 20 || work.renderer.advance(); };
  panel_.open(std::move(unending));
  QApplication::processEvents();
  EXPECT_TRUE(panel_.building());
  EXPECT_GT(panel_.document()->pageCount(), 0U) << "the first pages are there at once";
  EXPECT_FALSE(action("Print")->isEnabled()) << "half a document is not printed";
  auto* cancel = panel_.findChild<QPushButton*>("ProgressCancel");
  ASSERT_TRUE(cancel->isVisible());
  const std::size_t before = panel_.document()->pageCount();
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(panel_.building());
  EXPECT_FALSE(cancel->isVisible());
  EXPECT_GE(panel_.document()->pageCount(), before);
  EXPECT_LT(panel_.document()->pageCount(), 2000U);
  EXPECT_TRUE(action("Print")->isEnabled());

  LongBuild whole(2000);
  panel_.open(whole.build());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.building(); }, 20000));
  EXPECT_EQ(panel_.findChild<QSpinBox*>("PageNumber")->maximum(),
            static_cast<int>(panel_.document()->pageCount()));
  EXPECT_EQ(whole.renderer.recordsRead(), 2000U);
}

TEST_F(PreviewTest, aFailureWhileItGrowsLeavesWhatIsThere) {
  int steps = 0;
  LongBuild work(100);
  report::Build build = work.build();
  build.advance = [&] {
    if (++steps == 3) throw StoreError("Le fichier des données ne répond plus.");
    return work.renderer.advance();
  };
  panel_.open(std::move(build));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !panel_.building(); }, 20000));
  EXPECT_EQ(shown_, std::vector<std::string>{"Le fichier des données ne répond plus."});
  EXPECT_EQ(panel_.document()->pageCount(), 2U);
}

TEST(Build, aLongPreparationCanBeGivenUp) {
  LongBuild work(100);
  report::Build build = work.build();
  bool offered = false;
  build.advance = [&] {
    if (auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget()); box && !offered) {
      offered = true;
      box->cancel();
    }
    return true;
  };
  EXPECT_FALSE(report::complete(build, nullptr));
  EXPECT_TRUE(offered);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

  LongBuild brief(100);
  build = brief.build();
  EXPECT_TRUE(report::complete(build, nullptr));
  EXPECT_EQ(brief.renderer.recordsRead(), 100U);
}

TEST(Preview, blocksUntilItIsClosed) {
  Preview preview({std::make_shared<report::Document>(sampleDocument(3)), {}, {}, {}}, {}, nullptr);
  bool wasCurrent = false, stayed = false;
  QTimer::singleShot(0, [&] {
    wasCurrent = Preview::current() == &preview;
    preview.findChild<QAction*>("Find")->trigger();
    auto* text = preview.findChild<QLineEdit*>("FindText");
    text->setText("ligne");
    QTest::keyClick(text, Qt::Key_Return);
    stayed = preview.isVisible();
    QTest::mouseClick(preview.findChild<QPushButton*>("ClosePreview"), Qt::LeftButton);
  });
  preview.run();
  EXPECT_TRUE(wasCurrent);
  EXPECT_TRUE(stayed) << "Enter looks for a text and closes nothing";
  EXPECT_EQ(Preview::current(), nullptr);
}

}  // namespace
}  // namespace tavoline
