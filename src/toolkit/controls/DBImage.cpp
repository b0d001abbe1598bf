#include "toolkit/controls/DBImage.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>

#include "toolkit/controls/Pictures.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

DBImage::DBImage(QWidget* parent) : QFrame(parent), Binding(this) {
  setFrameShape(QFrame::StyledPanel);
}

void DBImage::LoadFromFile(const std::string& path) {
  ProgressBox box("Lecture de l'image…", window());
  const SharedBytes bytes = pictureFromFile(path, box.progress());
  if (!bytes) return;
  if (source()) {
    dataset()->Edit();
    dataset()->SetFieldValue(dataField().toStdString(), Value(bytes));
  }
  picture_ = decodedPicture(bytes);
  QGuiApplication::clipboard()->setPixmap(picture_);
  update();
}

bool DBImage::Empty() {
  sync();
  return picture_.isNull();
}

void DBImage::pull() {
  if (!source()) return;
  const Value value = displayValue();
  picture_ = value.isBytes() ? decodedPicture(value.toBytes()) : QPixmap();
  update();
}

void DBImage::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  if (picture_.isNull()) return;
  const QRect room = contentsRect().adjusted(6, 6, -6, -6);
  QRect place(QPoint(), picture_.size().scaled(room.size(), Qt::KeepAspectRatio));
  place.moveCenter(room.center());
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawPixmap(place, picture_);
}

void DBImage::mouseDoubleClickEvent(QMouseEvent*) {
  guarded(OnDblClick);
}

}  // namespace tavoline
