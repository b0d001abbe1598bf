#pragma once

#include <QtWidgets/QPushButton>
#include <functional>
#include <string>

namespace tavoline {

/// A push button. Its `text` is the exact caption; blanks at the ends of it are kept there and not drawn.
class Button : public QPushButton {
  Q_OBJECT

 public:
  explicit Button(QWidget* parent = nullptr);

  std::function<void()> OnClick;
  /// Presses the button from code: the handler runs directly, enabled or not, and what it throws ends the caller.
  void Click();
  std::string Caption() const;
  void Caption(std::string_view text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override;
};

}  // namespace tavoline
