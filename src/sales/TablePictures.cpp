#include "sales/TablePictures.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

#include "toolkit/theme/Theme.h"

// A static library's resources are taken in by name, from outside any namespace.
static void takeTablePictures() {
  Q_INIT_RESOURCE(sales);
}

namespace tavoline {

QPixmap tablePicture(TablePicture which) {
  takeTablePictures();
  QSvgRenderer drawing(QStringLiteral(":/tavoline/sales/table-%1%2.svg")
                           .arg(which == TablePicture::Free ? QStringLiteral("free") : QStringLiteral("busy"),
                                shade() == Shade::Dark ? QStringLiteral("-dark") : QString()));
  const qreal ratio = qGuiApp->devicePixelRatio();
  QPixmap picture((QSizeF(drawing.defaultSize()) * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  drawing.render(&painter, QRectF(QPointF(), drawing.defaultSize()));
  return picture;
}

}  // namespace tavoline
