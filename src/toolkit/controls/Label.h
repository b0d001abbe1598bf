#pragma once

#include <QtWidgets/QLabel>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline {

/// A text, often a hidden one that carries a value between steps. Its `text` is the exact caption; blanks at
/// the ends of it are kept there and not drawn. On one line, a figure is never cut: where there is too little
/// room, its letters are made smaller. What comes out of the data is cut short then, and stands whole in the
/// tooltip; it widens no screen.
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
  bool event(QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  virtual QString heldText() { return text(); }
  /// Whether the text is of any length, as what comes out of the data is.
  virtual bool ofAnyLength() const { return false; }
  /// The caption without the blanks at its ends, in its place.
  void drawCaption(QPainter& painter);

 private:
  bool shrinks() const;
  bool elides() const { return ofAnyLength() && !wordWrap() && !shrinks(); }
  int roomForText() const;
};

}  // namespace tavoline
