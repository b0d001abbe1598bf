#pragma once

#include <QtWidgets/QWidget>

namespace tavoline {

/// The numeric touch keypad: "Back" "/" "*" "-" · "7" "8" "9" "+" (two rows high) · "4" "5" "6" · "1" "2" "3"
/// "Enter" (two rows high) · "0" (two cells wide) ".". Each key sends the key press of the hardware key to
/// the control that has the focus, and never takes the focus itself. Objects are named "key" + caption.
/// A compact one has keys without gaps that fit cells of 40 by 40 pixels; the others are for fingers.
class Keypad : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool compact READ compact WRITE setCompact)

 public:
  explicit Keypad(QWidget* parent = nullptr);

  /// Sends a key, pressed and released, to the control that has the focus.
  static void press(int code, const QString& text, Qt::KeyboardModifiers modifiers);

  bool compact() const { return compact_; }
  void setCompact(bool compact);

 private:
  bool compact_ = false;
};

}  // namespace tavoline
