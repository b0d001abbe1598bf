#include "help/Book.h"

#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>

#include "help/BookKey.h"
#include "screens/AllScreens.h"

namespace tavoline {
namespace {

class BookTest : public AllScreens {
 protected:
  static Book* shown() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* book = dynamic_cast<Book*>(window); book && book->isVisible()) return book;
    return nullptr;
  }
};

TEST_F(BookTest, F1OpensThePageOfTheScreenInFrontAndEveryPageIsThere) {
  start();
  const BookKey key;
  QSet<QString> pages;
  for (TForm* form : Forms::all()) {
    SCOPED_TRACE(form->objectName().toStdString());
    bringUp(form);
    form->window()->activateWindow();
    at.settle();
    at.press(Qt::Key_F1);
    Book* book = shown();
    ASSERT_TRUE(book);
    EXPECT_EQ(book->Page().toStdString(), pageOf(form->objectName().toStdString()));
    pages.insert(book->Page());
    book->close();
    if (form != MenuF) form->Close();
  }
  EXPECT_GE(pages.size(), 14);
}

// A modal dialog shuts out every window that is not its own.
TEST_F(BookTest, ADialogDoesNotShutTheBookOut) {
  start();
  const BookKey key;
  TForm* dialog = Forms::find("champsF");
  at.during([&] { dialog->ShowModal(); },
            [&] {
              at.waitUntil([&] { return QApplication::activeWindow() == dialog; });
              at.press(Qt::Key_F1);
              ASSERT_TRUE(shown());
              EXPECT_EQ(shown()->Page().toStdString(), "encaisser");
              const auto* contents = shown()->findChild<QWidget*>(QStringLiteral("Sommaire"));
              QTest::mouseClick(shown()->windowHandle(), Qt::LeftButton, {},
                                contents->mapTo(shown(), contents->rect().center()));
              EXPECT_EQ(shown()->Page().toStdString(), "index");
              shown()->close();
              dialog->Close();
            });
}

}  // namespace
}  // namespace tavoline
