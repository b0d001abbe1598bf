#pragma once

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QMessageBox>

namespace tavoline {

/// A message box that shows its whole text, whatever its length and the size of its letters: it widens, then
/// breaks lines between words, and keeps within the display. A barcode scanner does not answer it: an Enter
/// right behind other signs is dropped, with a beep.
class MessageBox : public QMessageBox {
  Q_OBJECT

 public:
  MessageBox(const QString& title, const QString& text, StandardButtons buttons, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* button, QEvent* event) override;

 private:
  void fit();
  bool isScanned(const QKeyEvent& key);

  QElapsedTimer sinceSign_;
};

}  // namespace tavoline
