#include "sales/TablePictures.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>

// A static library's resources are taken in by name, from outside any namespace.
static void takeTablePictures() {
  Q_INIT_RESOURCE(sales);
}

namespace tavoline {

QPixmap tablePicture(TablePicture which) {
  takeTablePictures();
  QSvgRenderer drawing(which == TablePicture::Free ? QStringLiteral(":/tavoline/sales/table-free.svg")
                                                   : QStringLiteral(":/tavoline/sales/table-busy.svg"));
  const qreal ratio = qGuiApp->devicePixelRatio();
  QPixmap picture((QSizeF(drawing.defaultSize()) * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  drawing.render(&painter, QRectF(QPointF(), drawing.defaultSize()));
  return picture;
}

}  // namespace tavoline
