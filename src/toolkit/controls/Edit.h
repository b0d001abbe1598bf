#pragma once

#include <QtWidgets/QLineEdit>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A one-line input. An amount, aligned to the right, that is too long for it is shown in smaller letters, so
/// that no leading digit is hidden. A change by code fires OnChange directly, just like typing, and what it
/// throws ends the caller.
class Edit : public QLineEdit {
  Q_OBJECT
  Q_PROPERTY(QString text READ heldText WRITE enterText)
  Q_PROPERTY(bool upperCase READ upperCase WRITE setUpperCase)

 public:
  explicit Edit(QWidget* parent = nullptr);

  std::function<void()> OnChange;
  std::function<void()> OnEnter;  ///< Return or Enter pressed.
  std::function<void()> OnExit;   ///< The focus left for another control of the system.
  std::function<void()> OnUp, OnDown;

  virtual std::string Text();
  virtual void Text(std::string_view text);
  void Clear() { Text(""); }
  /// Gives the input the focus. Throws FocusError for a disabled or hidden control of a visible screen.
  void SetFocus();
  /// Paints the input red (a mandatory input left empty) or in its own colour again.
  void Red(bool on);

  bool upperCase() const { return upperCase_; }
  void setUpperCase(bool on);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  virtual void typed();      ///< After every change by the user.
  virtual void focusLeft();  ///< The focus went to another control of the system.
  virtual QString heldText() { return text(); }
  /// Whether the first tap after the focus came selects the text, to be typed over; the next one places the
  /// cursor. So it is with figures, which stand on the right. In a code or a name it is a letter that is
  /// mended.
  virtual bool typedOver() const { return bool(alignment() & Qt::AlignRight); }

 private:
  void enterText(const QString& text);
  void fitLetters();

  bool upperCase_ = false;
  bool fitting_ = false;
  int letters_ = 0;       // pixels that an amount which fits has; 0 while none was too long
  bool touched_ = false;  // a key or a tap came since the focus did
};

}  // namespace tavoline
