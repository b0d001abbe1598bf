#include "toolkit/report/output/Painter.h"

#include <QtGui/QImage>
#include <QtGui/QPaintDevice>
#include <QtGui/QPainter>
#include <algorithm>
#include <cmath>

#include "toolkit/report/model/Code128.h"
#include "toolkit/report/output/FittedWords.h"

namespace tavoline::report {

namespace {

constexpr double kTextInset = 3;      // units between a box and its words
constexpr double kQuietModules = 10;  // on either side of a barcode
constexpr double kShadow = 4;

QColor colour(Colour value) {
  return QColor::fromRgb(value & 0xFFFFFFU);
}

// No letter is wider than its font is high, and no line higher than this share of it.
constexpr double kLineHeight = 1.3;

bool fitsForSure(const Object& object, const QString& text, const Rect& rect) {
  const double size = object.fontSize * kUnitsPerPoint;
  return static_cast<double>(text.size()) * size <= rect.width - 2 * kTextInset &&
         size * kLineHeight <= rect.height && !text.contains(u'\n');
}

// A painter with the page's origin and scale: the objects are told in units, the device works in dots.
class Canvas {
 public:
  Canvas(QPainter& painter, QPointF origin, double scale)
      : painter_(painter), origin_(origin), scale_(scale) {}

  void object(const Item& item, const QImage& logo) {
    const Object& object = *item.object;
    if (object.shadow) {
      fill({item.rect.left + kShadow, item.rect.bottom(), item.rect.width, kShadow}, object.frameColour);
      fill({item.rect.right(), item.rect.top + kShadow, kShadow, item.rect.height}, object.frameColour);
    }
    if (object.fill != kNoColour) fill(item.rect, object.fill);
    switch (object.kind) {
      case ObjectKind::Memo:
      case ObjectKind::SysMemo:
        words(item);
        break;
      case ObjectKind::Picture:
        picture(item.rect, logo);
        break;
      case ObjectKind::BarCode:
        barcode(item);
        break;
      case ObjectKind::Line:
        return line(item);
    }
    frame(item);
  }

 private:
  QRectF device(const Rect& rect) const {
    return {origin_.x() + rect.left * scale_, origin_.y() + rect.top * scale_, rect.width * scale_,
            rect.height * scale_};
  }

  // Edges fall on whole dots, so that neighbouring cells share theirs and thin lines stay sharp.
  QRectF snapped(const Rect& rect) const {
    const QRectF exact = device(rect);
    return {QPointF(std::round(exact.left()), std::round(exact.top())),
            QPointF(std::round(exact.right()), std::round(exact.bottom()))};
  }

  double lineWidth(const Object& object) const {
    return std::max(1.0, std::round(object.frameWidth * scale_));
  }

  void fill(const Rect& rect, Colour value) { painter_.fillRect(snapped(rect), colour(value)); }

  void edge(const Object& object, QPointF from, QPointF to) {
    const double width = lineWidth(object);
    if (object.frameStyle == FrameStyle::Solid) {
      // Horizontal or vertical: a filled bar, centred on the edge.
      QRectF bar = QRectF(from, to).normalized();
      const double before = std::floor(width / 2);
      bar.adjust(-before, -before, width - before, width - before);
      painter_.fillRect(bar, colour(object.frameColour));
      return;
    }
    QPen pen(colour(object.frameColour), width);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({1.5, 2.5});
    painter_.setPen(pen);
    painter_.drawLine(from, to);
  }

  void frame(const Item& item) {
    const Object& object = *item.object;
    const QRectF box = snapped(item.rect);
    if (object.frame & SideLeft) edge(object, box.topLeft(), box.bottomLeft());
    if (object.frame & SideRight) edge(object, box.topRight(), box.bottomRight());
    if (object.frame & SideTop) edge(object, box.topLeft(), box.topRight());
    if (object.frame & SideBottom) edge(object, box.bottomLeft(), box.bottomRight());
  }

  void line(const Item& item) {
    const QRectF box = snapped(item.rect);
    edge(*item.object, box.topLeft(),
         item.rect.width >= item.rect.height ? box.topRight() : box.bottomLeft());
  }

  void words(const Item& item) {
    if (item.text.empty()) return;
    const Object& object = *item.object;
    const QString text = QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size()));
    const QRectF outer = device(item.rect);
    const double inset = kTextInset * scale_;
    const QRectF box = outer.adjusted(inset, 0, -inset, 0);
    painter_.setFont(deviceFont(object, scale_, painter_.device()->logicalDpiY()));
    painter_.setPen(colour(object.fontColour));
    if (fitsForSure(object, text, item.rect)) return painter_.drawText(box, flags(object), text);
    painter_.save();
    painter_.setClipRect(outer, Qt::IntersectClip);
    line(object, text, box);
    painter_.restore();
  }

  void line(const Object& object, const QString& text, const QRectF& box) {
    const FittedWords fit = fitWords(text, object, box.width() / scale_, box.height() / scale_);
    QFont font = painter_.font();
    font.setPointSizeF(font.pointSizeF() * fit.size);
    painter_.setFont(font);
    if (object.hAlign == HAlign::Block && !fit.cut) {
      painter_.drawText(box, flags(object) | Qt::TextWordWrap, text);
      return;
    }
    const QFontMetricsF metrics(font, painter_.device());
    double widest = 1;
    for (const QString& words : fit.lines) widest = std::max(widest, metrics.horizontalAdvance(words));
    const double narrower = std::min(1.0, box.width() / widest);
    painter_.translate(box.left(), 0);
    painter_.scale(narrower, 1);
    painter_.drawText(QRectF(0, box.top(), box.width() / narrower, box.height()), flags(object),
                      fit.lines.join(u'\n'));
  }

  static int flags(const Object& object) {
    int result = Qt::TextDontClip;
    switch (object.hAlign) {
      case HAlign::Left:
        result |= Qt::AlignLeft;
        break;
      case HAlign::Right:
        result |= Qt::AlignRight;
        break;
      case HAlign::Center:
        result |= Qt::AlignHCenter;
        break;
      case HAlign::Block:
        result |= Qt::AlignJustify;
        break;
    }
    switch (object.vAlign) {
      case VAlign::Top:
        return result | Qt::AlignTop;
      case VAlign::Center:
        return result | Qt::AlignVCenter;
      case VAlign::Bottom:
        return result | Qt::AlignBottom;
    }
    return result;
  }

  void picture(const Rect& rect, const QImage& image) {
    if (image.isNull()) return;
    const QRectF box = device(rect);
    const QSizeF size = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
    QRectF target(QPointF(0, 0), size);
    target.moveCenter(box.center());
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.drawImage(target, image);
  }

  void barcode(const Item& item) {
    const std::vector<bool> modules = code128(item.text);
    if (modules.empty()) return words(item);
    const QRectF box = device(item.rect);
    const double room = box.width() / (static_cast<double>(modules.size()) + 2 * kQuietModules);
    double module = std::max(1.0, std::round(item.object->zoom * scale_));
    if (module > room) module = room >= 1 ? std::floor(room) : room;
    double left = std::round(box.center().x() - module * static_cast<double>(modules.size()) / 2);
    for (const bool bar : modules) {
      if (bar)
        painter_.fillRect(QRectF(left, std::round(box.top()), module, std::round(box.height())), Qt::black);
      left += module;
    }
  }

  QPainter& painter_;
  QPointF origin_;
  double scale_;
};

}  // namespace

PagePainter::PagePainter(const Document& document) : document_(document) {
  const SharedBytes& bytes = document.logo();
  if (bytes) logo_.loadFromData(bytes->data(), static_cast<int>(bytes->size()));
}

void PagePainter::paint(QPainter& painter, std::size_t page, QPointF origin, double scale) const {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::TextAntialiasing);
  Canvas canvas(painter, origin, scale);
  for (const Item& item : document_.items(page)) canvas.object(item, logo_);
  painter.restore();
}

}  // namespace tavoline::report
