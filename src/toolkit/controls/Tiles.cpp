#include "toolkit/controls/Tiles.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

constexpr int radius = 8;        // pixels
constexpr int captionRight = 8;  // pixels kept free at the right of a caption

QString qt(std::string_view text) {
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// The handler may free the tile: nothing of it is touched afterwards.
void runClick(QWidget* tile, std::function<void()> handler) {
  const RunningClick running(tile);
  if (handler) handler();
}

}  // namespace

ShapeButton::ShapeButton(QWidget* parent) : QAbstractButton(parent) {
  setCursor(Qt::PointingHandCursor);
  connect(this, &QAbstractButton::clicked, this, [this] { guarded([this] { Click(); }); });
}

void ShapeButton::Click() {
  runClick(this, OnClick);
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

QSize ShapeButton::sizeHint() const {
  return picture_.isNull() ? QSize(100, 108) : picture_.size();
}

void ShapeButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath shape;
  shape.addRoundedRect(QRectF(rect()), radius, radius);
  painter.setClipPath(shape);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  const QRect room = rect().adjusted(0, 0, 0, -reservedBelow);
  if (!picture_.isNull()) drawPicture(painter, room);
  drawCaption(painter, room);
  if (isDown()) painter.fillRect(rect(), QColor(0, 0, 0, 40));
  if (!isEnabled()) painter.fillRect(rect(), QColor(255, 255, 255, 140));
  painter.setClipping(false);
  painter.setPen(QPen(hasFocus() ? palette().color(QPalette::Highlight) : palette().color(QPalette::Midlight),
                      hasFocus() ? 3 : 1));
  const qreal inset = hasFocus() ? 1.5 : 0.5;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

// A picture made for the tile is drawn as it is; any other one as large as it fits, in its own proportions.
void ShapeButton::drawPicture(QPainter& painter, const QRect& room) {
  const qreal ratio = devicePixelRatioF();
  const QSize wanted = picture_.size().scaled(room.size() * ratio, Qt::KeepAspectRatio);
  if (scaled_.isNull() || scaled_.size() != wanted) {
    scaled_ = picture_.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled_.setDevicePixelRatio(ratio);
  }
  QRect place(QPoint(), wanted / ratio);
  place.moveCenter(room.center());
  painter.drawPixmap(place.topLeft(), scaled_);
}

void ShapeButton::drawCaption(QPainter& painter, const QRect& room) {
  const QString caption = text().trimmed();
  if (caption.isEmpty()) return;
  const int flags = Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop;
  const QRect column = room.adjusted(captionX, 0, -captionRight, 0);
  const QRect needed = painter.fontMetrics().boundingRect(column, flags, caption);
  const int height = std::min(needed.height(), room.height() - 8);
  QRect band(room.left(), room.top(), room.width(), height + 8);
  if (picture_.isNull() || captionPlace == Qt::AlignVCenter) {
    band.moveTop(room.center().y() - band.height() / 2);
  } else if (captionPlace == Qt::AlignBottom) {
    band.moveBottom(room.bottom());
  }
  if (!picture_.isNull() && captionPlace != Qt::AlignVCenter)
    painter.fillRect(band, QColor(255, 255, 255, 214));
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(QRect(captionX, band.top() + 4, column.width(), height), flags, caption);
}

Panel::Panel(QWidget* parent) : QFrame(parent) {}

void Panel::Click() {
  runClick(this, OnClick);
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
