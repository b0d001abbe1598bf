#pragma once

#include <QtWidgets/QLabel>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A text, often a hidden one that carries a value between steps. Its `text` is the exact caption; blanks at
/// the ends of it are kept there and not drawn. A figure on one line is never cut: where there is too little
/// room, its letters are made smaller.
class Label : public QLabel {
  Q_OBJECT
  Q_PROPERTY(QString text READ heldText WRITE setText)

 public:
  explicit Label(QWidget* parent = nullptr);

  std::function<void()> OnClick;
  void Click();
  virtual std::string Caption();
  virtual void Caption(std::string_view text);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  virtual QString heldText() { return text(); }
  /// The caption without the blanks at its ends, in its place.
  void drawCaption(QPainter& painter);

 private:
  bool shrinks() const;
};

}  // namespace tavoline
