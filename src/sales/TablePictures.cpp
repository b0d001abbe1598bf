#include "sales/TablePictures.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace tavoline {
namespace {

struct Paints {
  QColor ground, chair, back, top, rim;
};

Paints paintsOf(TablePicture which) {
  if (which == TablePicture::Free)
    return {QColor(0xe6f4ea), QColor(0x8fcfa0), QColor(0x4f9d66), QColor(0xf7fcf8), QColor(0x2e7d46)};
  return {QColor(0xfbe9e7), QColor(0xeaa39a), QColor(0xc0564a), QColor(0xfff7f5), QColor(0xb3261e)};
}

/// One chair at the upper edge of a table: the seat, and the curved back behind it.
void drawChair(QPainter& painter, const Paints& paints) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(paints.chair);
  painter.drawRoundedRect(QRectF(-11, -9, 22, 20), 6, 6);
  painter.setBrush(paints.back);
  painter.drawRoundedRect(QRectF(-12, -13, 24, 7), 3.5, 3.5);
}

void drawChairAt(QPainter& painter, const Paints& paints, QPointF where, double degrees) {
  painter.save();
  painter.translate(where);
  painter.rotate(degrees);
  drawChair(painter, paints);
  painter.restore();
}

}  // namespace

QPixmap tablePicture(TablePicture which) {
  const Paints paints = paintsOf(which);
  QPixmap picture(99, 108);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(paints.ground);
  painter.drawRoundedRect(QRectF(1, 1, 97, 106), 12, 12);

  for (const double x : {32.0, 67.0}) {
    drawChairAt(painter, paints, {x, 23}, 0);
    drawChairAt(painter, paints, {x, 85}, 180);
  }

  const QRectF top(8, 28, 83, 52);
  painter.setBrush(QColor(0, 0, 0, 28));
  painter.drawRoundedRect(top.translated(0, 2.5), 12, 12);
  QLinearGradient light(top.topLeft(), top.bottomLeft());
  light.setColorAt(0, Qt::white);
  light.setColorAt(1, paints.top);
  painter.setBrush(light);
  painter.setPen(QPen(paints.rim, 2.5));
  painter.drawRoundedRect(top, 12, 12);
  return picture;
}

}  // namespace tavoline
