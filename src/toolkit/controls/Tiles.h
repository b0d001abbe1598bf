#pragma once

#include <QtGui/QPixmap>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFrame>
#include <functional>
#include <string>
#include <string_view>

#include "data/value/Value.h"
#include "toolkit/controls/FittedText.h"
#include "toolkit/controls/FlowPanel.h"
#include "toolkit/controls/Pictures.h"
#include "toolkit/controls/TileNotes.h"

namespace tavoline {

/// A flat touch tile: a picture, and a caption drawn over it from `captionX`. The "shape button" of the floor
/// map and of the article tiles. Its click may free it.
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
  /// What is told beside the caption; painted anew only where it is another.
  void Tell(const TileNotes& notes);
  const TileNotes& Notes() const { return notes_; }
  int captionX = 15;                              ///< Pixels from the left edge.
  int captionRight = 8;                           ///< Pixels kept free at the right of the caption.
  Qt::AlignmentFlag captionPlace = Qt::AlignTop;  ///< Top, centre or bottom, where there is a picture.
  int reservedBelow = 0;  ///< Pixels at the bottom kept free for a label laid over the tile.

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  FittedText captionLines(const QRect& room) const;
  QRect captionPlaceIn(const QRect& room, const FittedText& caption) const;
  void drawPicture(QPainter& painter, const QRect& tile, const QRect& caption);

  TileNotes notes_;
  QPixmap picture_;
  QPixmap scaled_;  // the picture as it was last drawn
};

/// A plain panel with a caption that is held (`property("text")`) and not drawn. A click anywhere on it
/// presses it, and may free it.
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

}  // namespace tavoline
