#pragma once

#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QWidget>

#include "toolkit/controls/Button.h"
#include "toolkit/controls/FingerScroll.h"

namespace tavoline {

/// The pages of the owner's book. Pictures come as wide as the page allows.
class BookPages : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  FingerScroll fingers_{viewport(), FingerScroll::ByTouch};
  int width_ = 0;  // for which the pictures were made
};

/// The owner's book in a window beside the work, which goes on behind it. It belongs to the screen that was
/// in front when it was opened, so that a dialog does not shut it out.
class Book : public QWidget {
 public:
  Book();
  /// Shows a page by its name without ending ("commande"), in front of everything. Where the book is not
  /// installed, a page says so.
  void Open(const QString& page);
  QString Page() const;  ///< The one shown, by the same name; empty where the book is not installed.

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void belongTo(QWidget* front);

  Button* contents_;
  Button* back_;
  Button* close_;
  BookPages* pages_;
};

}  // namespace tavoline
