#pragma once

#include <QtWidgets/QPushButton>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A push button. Its `text` is the exact caption; blanks at the ends of it are kept there and not drawn.
class Button : public QPushButton {
  Q_OBJECT

 public:
  explicit Button(QWidget* parent = nullptr);

  std::function<void()> OnClick;
  std::function<void()> OnMouseUp;     ///< The pointer was released over it; before OnClick.
  std::function<void()> OnMouseLeave;  ///< The pointer left it.
  /// Presses the button from code: the handler runs directly, enabled or not, and what it throws ends the
  /// caller.
  void Click();
  std::string Caption() const;
  void Caption(std::string_view text);
  /// Gives the button the focus. Throws FocusError for a disabled or hidden button of a visible screen.
  void SetFocus();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  /// An icon as it is drawn here: in the colour of the text where the button lies on the accent colour.
  QIcon shownIcon(const QIcon& icon) const;

 private:
  QSize withoutBlanks(QSize size) const;
};

}  // namespace tavoline
