#pragma once

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFrame>
#include <functional>
#include <string>
#include <vector>

#include "data/value/Value.h"

namespace tavoline {

/// A flat touch tile: a picture, and a caption drawn over it from `captionX`. The "shape button" of the floor
/// map and of the article tiles.
class ShapeButton : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ShapeButton(QWidget* parent = nullptr);
  std::function<void()> OnClick;
  void Click();
  std::string Caption() const;
  void Caption(std::string_view text);
  void Picture(const QPixmap& picture);
  /// From bytes of a stored picture; decoded once per content. What cannot be decoded leaves the caption
  /// alone.
  void Picture(const SharedBytes& bytes);
  int captionX = 15;

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override;

 private:
  QPixmap picture_;
};

/// A plain panel with a caption that is held (`property("text")`) and not drawn. A click anywhere on it
/// presses it.
class Panel : public QFrame {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE setText)

 public:
  explicit Panel(QWidget* parent = nullptr);
  std::function<void()> OnClick;
  void Click();
  std::string Caption() const;
  void Caption(std::string_view text);
  QString text() const { return text_; }
  void setText(const QString& text) { text_ = text; }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  QString text_;
};

/// Lays its children out in order: along a row from the left, then the next row below; or down a column from
/// the top, then the next column to the right. Scrolls when they do not fit.
class FlowPanel : public QFrame {
  Q_OBJECT
  Q_PROPERTY(FlowStyle flowStyle MEMBER style_)

 public:
  enum FlowStyle { LeftRightTopBottom, TopBottomLeftRight };
  Q_ENUM(FlowStyle)
  explicit FlowPanel(QWidget* parent = nullptr);

  void add(QWidget* tile);  ///< The panel becomes its parent; the tile keeps its own size.
  template <class T>
  std::vector<T*> tiles() const;  ///< In layout order.
  void clear();                   ///< Frees every tile at once.

  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void arrange();
  FlowStyle style_ = LeftRightTopBottom;
  std::vector<QWidget*> order_;
  QWidget* canvas_ = nullptr;
};

/// Makes a picture from stored bytes (PNG, JPEG, BMP), decoding each content once per process; null if it
/// cannot.
QPixmap decodedPicture(const SharedBytes& bytes);

}  // namespace tavoline
