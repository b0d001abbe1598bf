#include "toolkit/controls/Tiles.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <algorithm>
#include <cmath>

#include "toolkit/forms/Guard.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int radius = 8;            // pixels
constexpr int smallestLetters = 12;  // pixels

QString qt(std::string_view text) {
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// The handler may free the tile: it is a copy, and nothing of the tile is touched afterwards.
void runClick(QWidget* tile, std::function<void()>&& handler) {
  const RunningClick running(tile);
  if (handler) handler();
}

}  // namespace

ShapeButton::ShapeButton(QWidget* parent) : QAbstractButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);  // a tap leaves the focus where it is
  QFont letters = font();
  letters.setBold(true);
  letters.setPixelSize(15);
  setFont(letters);
  connect(this, &QAbstractButton::clicked, this, [this] { guarded([this] { Click(); }); });
}

void ShapeButton::Click() {
  runClick(this, std::function(OnClick));
}

std::string ShapeButton::Caption() const {
  return text().toStdString();
}

void ShapeButton::Caption(std::string_view text) {
  setText(qt(text));
  setShortcut({});  // an ampersand in a name is no shortcut
}

void ShapeButton::Picture(const QPixmap& picture) {
  picture_ = picture;
  scaled_ = {};
  update();
}

void ShapeButton::Picture(const SharedBytes& bytes) {
  Picture(decodedPicture(bytes));
}

void ShapeButton::Tell(const TileNotes& notes) {
  if (notes == notes_) return;
  notes_ = notes;
  update();
}

QSize ShapeButton::sizeHint() const {
  return picture_.isNull() ? QSize(100, 108) : picture_.deviceIndependentSize().toSize();
}

void ShapeButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath shape;
  shape.addRoundedRect(QRectF(rect()), radius, radius);
  painter.setClipPath(shape);
  painter.fillRect(rect(), palette().color(QPalette::Base));

  const QRect room = rect().adjusted(0, 0, 0, -reservedBelow);
  const FittedText caption = captionLines(room);
  QRect captionRoom = captionPlaceIn(room, caption);
  if (!picture_.isNull()) drawPicture(painter, room, captionRoom);
  painter.setFont(caption.font);
  painter.setPen(palette().color(QPalette::ButtonText));
  for (const QString& line : caption.lines) {
    painter.drawText(captionRoom.left(), captionRoom.top() + QFontMetrics(caption.font).ascent(), line);
    captionRoom.setTop(captionRoom.top() + caption.lineHeight);
  }
  captionRoom.setHeight(notes_.heightBelow());
  notes_.drawBelow(painter, captionRoom);
  notes_.drawOver(painter, rect(), reservedBelow);

  if (isDown()) painter.fillRect(rect(), QColor(0, 0, 0, 40));
  if (!isEnabled()) {
    QColor veil(theme().card);
    veil.setAlpha(140);
    painter.fillRect(rect(), veil);
  }
  painter.setClipping(false);
  const bool framed = hasFocus() || notes_.chosen;
  painter.setPen(QPen(palette().color(framed ? QPalette::Highlight : QPalette::Midlight), framed ? 3 : 1));
  const qreal inset = framed ? 1.5 : 0.5;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

// A picture made for the tile fills it, under the caption. Any other one gets the room that the caption
// leaves, and is drawn there as large as it fits, in its own proportions.
void ShapeButton::drawPicture(QPainter& painter, const QRect& tile, const QRect& caption) {
  const qreal ratio = devicePixelRatioF();
  QRect room = tile;
  const QSizeF own = picture_.deviceIndependentSize();
  const bool made = std::abs(own.width() - width()) <= 4 && std::abs(own.height() - height()) <= 4;
  if (!made) {
    if (!text().trimmed().isEmpty() && captionPlace == Qt::AlignTop) room.setTop(caption.bottom() + 4);
    if (!text().trimmed().isEmpty() && captionPlace == Qt::AlignBottom) room.setBottom(caption.top() - 4);
    room.adjust(6, 4, -6, -4);
  }
  const QSize wanted = picture_.size().scaled(room.size() * ratio, Qt::KeepAspectRatio);
  if (wanted.isEmpty()) return;
  if (scaled_.size() != wanted) {
    scaled_ = picture_.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled_.setDevicePixelRatio(ratio);
  }
  QRect place(QPoint(), wanted / ratio);
  place.moveCenter(room.center());
  painter.drawPixmap(place.topLeft(), scaled_);
}

FittedText ShapeButton::captionLines(const QRect& room) const {
  const int free = picture_.isNull() ? room.height() - 8 : room.height() / 2;
  const int height = qMax(free - notes_.heightBelow(), QFontMetrics(font()).height());
  return fitText(text(), font(), QSize(room.width() - captionX - captionRight, height), smallestLetters);
}

QRect ShapeButton::captionPlaceIn(const QRect& room, const FittedText& caption) const {
  QRect place(captionX, 6, room.width() - captionX - captionRight,
              caption.lineHeight * int(caption.lines.size()));
  if (picture_.isNull() || captionPlace == Qt::AlignVCenter)
    place.moveTop((room.height() - place.height() - notes_.heightBelow()) / 2);
  else if (captionPlace == Qt::AlignBottom)
    place.moveBottom(room.bottom() - 6);
  return place;
}

Panel::Panel(QWidget* parent) : QFrame(parent) {}

void Panel::Click() {
  runClick(this, std::function(OnClick));
}

std::string Panel::Caption() const {
  return text_.toStdString();
}

void Panel::Caption(std::string_view text) {
  text_ = qt(text);
}

void Panel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !OnClick || !rect().contains(event->position().toPoint())) {
    return QFrame::mouseReleaseEvent(event);
  }
  event->accept();
  guarded([this] { Click(); });
}

}  // namespace tavoline
