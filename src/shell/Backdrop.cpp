#include "shell/Backdrop.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

// The colour of the drawing: the accent, far away.
QColor faint() {
  const QColor accent(theme().accent), ground(theme().ground);
  const auto between = [](int near, int far) { return (2 * near + 3 * far) / 5; };
  return QColor(between(accent.red(), ground.red()), between(accent.green(), ground.green()),
                between(accent.blue(), ground.blue()));
}

// A table seen from above with its chairs, as on a floor plan.
void drawTable(QPainter& painter, QPointF centre, qreal radius, int chairs) {
  painter.save();
  painter.translate(centre);
  painter.setBrush(QColor(theme().shade));
  for (int i = 0; i < chairs; ++i) {
    painter.save();
    painter.rotate(360.0 * i / chairs);
    painter.drawRoundedRect(QRectF(-radius * 0.34, -radius * 1.62, radius * 0.68, radius * 0.42),
                            radius * 0.16, radius * 0.16);
    painter.restore();
  }
  painter.setBrush(QColor(theme().ground));
  painter.drawEllipse(QPointF(), radius, radius);
  painter.drawEllipse(QPointF(), radius * 0.34, radius * 0.34);
  painter.restore();
}

// A cup on its saucer with three strands of steam, in a box of 100 by 100 units.
QPainterPath cup() {
  QPainterPath path;
  path.moveTo(22, 44);
  path.lineTo(70, 44);
  path.cubicTo(70, 66, 62, 80, 46, 80);
  path.cubicTo(30, 80, 22, 66, 22, 44);
  path.moveTo(69, 50);
  path.cubicTo(86, 46, 86, 68, 65, 67);
  path.moveTo(12, 88);
  path.cubicTo(30, 92, 62, 92, 80, 88);
  for (const qreal x : {34.0, 46.0, 58.0}) {
    path.moveTo(x, 36);
    path.cubicTo(x - 7, 28, x + 7, 20, x, 10);
  }
  return path;
}

QPixmap draw(QSize size, qreal ratio) {
  QPixmap drawing(size * ratio);
  drawing.setDevicePixelRatio(ratio);
  QPainter painter(&drawing);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area(QPointF(), size);
  const QColor ground(theme().ground), ink = faint();

  QLinearGradient light(area.topLeft(), area.bottomRight());
  light.setColorAt(0, ground.lighter(103));
  light.setColorAt(1, ground.darker(102));
  painter.fillRect(area, light);

  const qreal unit = qMin(area.width(), area.height());
  painter.setPen(QPen(QColor(theme().shade).darker(103), 2));
  drawTable(painter, {area.width() * 0.12, area.height() * 0.86}, unit * 0.10, 4);
  drawTable(painter, {area.width() * 0.90, area.height() * 0.14}, unit * 0.12, 6);
  drawTable(painter, {area.width() * 0.86, area.height() * 0.82}, unit * 0.075, 3);
  drawTable(painter, {area.width() * 0.10, area.height() * 0.16}, unit * 0.065, 3);

  painter.save();
  const qreal side = unit * 0.30;
  painter.translate(area.center() - QPointF(side * 0.48, side * 0.86));
  painter.scale(side / 100, side / 100);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 3.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(cup());
  painter.restore();

  QFont name = painter.font();
  name.setPixelSize(qRound(unit * 0.085));
  name.setWeight(QFont::Light);
  name.setLetterSpacing(QFont::AbsoluteSpacing, unit * 0.012);
  painter.setFont(name);
  painter.setPen(ink.darker(shade() == Shade::Light ? 112 : 100));
  painter.drawText(QRectF(0, area.center().y() + side * 0.16, area.width(), unit * 0.14), Qt::AlignCenter,
                   "Tavoline");
  return drawing;
}

}  // namespace

Backdrop::Backdrop(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Backdrop::paintEvent(QPaintEvent*) {
  if (drawing_.deviceIndependentSize().toSize() != size()) drawing_ = draw(size(), devicePixelRatioF());
  QPainter(this).drawPixmap(0, 0, drawing_);
}

}  // namespace tavoline
