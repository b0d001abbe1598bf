#pragma once

#include <QtWidgets/QMessageBox>

namespace tavoline {

/// A message box that shows its whole text, whatever its length and the size of its letters: it widens, then
/// breaks lines between words, and keeps within the display.
class MessageBox : public QMessageBox {
  Q_OBJECT

 public:
  MessageBox(const QString& title, const QString& text, StandardButtons buttons, QWidget* parent);

 protected:
  bool event(QEvent* event) override;

 private:
  void fit();
};

}  // namespace tavoline
