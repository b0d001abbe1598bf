#pragma once

#include <QtCore/QObject>
#include <memory>
#include <string_view>

class QMenuBar;

namespace tavoline {

class Book;

/// Opens the owner's book on the page of the screen in front: by F1, whatever has the focus, and by a button
/// at the end of the menu bar, which is there for whoever has no keyboard.
class BookKey : public QObject {
 public:
  BookKey();
  ~BookKey() override;
  Book& Shown();  ///< The book, open on that page.

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void offerIn(QMenuBar* bar);

  std::unique_ptr<Book> book_;
};

/// The page of the book that tells how to work with a screen, by the screen's instance name; the contents for
/// a screen of which it does not tell.
const char* pageOf(std::string_view screen);

}  // namespace tavoline
