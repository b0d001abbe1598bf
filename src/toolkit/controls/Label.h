#pragma once

#include <QtWidgets/QLabel>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A text, often a hidden one that carries a value between steps.
class Label : public QLabel {
  Q_OBJECT

 public:
  explicit Label(QWidget* parent = nullptr);

  std::function<void()> OnClick;
  virtual std::string Caption();
  virtual void Caption(std::string_view text);

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace tavoline
