#pragma once

#include <QtWidgets/QLineEdit>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A one-line input. A change by code fires OnChange directly, just like typing, and what it throws ends the caller.
class Edit : public QLineEdit {
  Q_OBJECT
  Q_PROPERTY(bool upperCase MEMBER upperCase_)

 public:
  explicit Edit(QWidget* parent = nullptr);

  std::function<void()> OnChange;
  std::function<void()> OnEnter;  ///< Return or Enter pressed.
  std::function<void()> OnExit;   ///< The focus left.
  std::function<void()> OnUp, OnDown;

  virtual std::string Text();
  virtual void Text(std::string_view text);
  void Clear() { Text(""); }
  /// Gives the input the focus. Throws FocusError for a disabled or hidden control of a visible screen.
  void SetFocus();
  /// Paints the input red (a mandatory input left empty) or in its own colour again.
  void Red(bool on);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  virtual void typed();  ///< After every change by the user.

  bool upperCase_ = false;
};

}  // namespace tavoline
