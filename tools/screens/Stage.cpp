#include "tools/screens/Stage.h"

#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <stdexcept>
#include <string>

#include "toolkit/controls/Edit.h"
#include "toolkit/forms/Forms.h"

namespace tavoline {

QObject& Stage::find(std::string_view formAndControl) {
  const auto dot = formAndControl.find('.');
  const std::string_view form = formAndControl.substr(0, dot);
  QObject* found = Forms::find(form);
  if (dot != std::string_view::npos) {
    found = Forms::control<QObject>(form, std::string(formAndControl.substr(dot + 1)).c_str());
  }
  if (!found) throw std::runtime_error("no " + std::string(formAndControl));
  return *found;
}

bool Stage::exists(std::string_view form) {
  return Forms::find(form);
}

void Stage::settle() {
  for (int round = 0; round < 4; ++round) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

void Stage::tap(std::string_view formAndControl) {
  control<QAbstractButton>(formAndControl).click();
  settle();
}

void Stage::choose(std::string_view entry) {
  control<QAction>("MenuF." + std::string(entry)).trigger();
  settle();
}

void Stage::type(std::string_view formAndControl, std::string_view text) {
  control<Edit>(formAndControl).Text(text);
  settle();
}

void Stage::keep(const std::string& name, const QImage& picture) const {
  const QString file = folder_ + "/" + QString::fromStdString(name) + ".png";
  if (!picture.save(file)) throw std::runtime_error("cannot write " + file.toStdString());
}

void Stage::whenModal(std::function<void(QWidget&)> act) {
  QTimer::singleShot(50, [act = std::move(act)] {
    QWidget* modal = QApplication::activeModalWidget();
    modal ? act(*modal) : whenModal(act);
  });
}

QImage Stage::seen() const {
  const qreal ratio = qApp->devicePixelRatio();
  QImage picture((QSizeF(display_) * ratio).toSize(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(ratio);
  QPainter painter(&picture);
  for (TForm* form : Forms::all()) {
    if (!form->isVisible() || !form->isWindow()) continue;
    if (form == Forms::all().front()) {
      form->setWindowState(Qt::WindowNoState);
      form->setGeometry(QRect(QPoint(), display_));
    }
    QRect place(QPoint(), form->size());
    place.moveCenter(QRect(QPoint(), display_).center());
    if (form != Forms::all().front()) {  // the edge that a window manager draws
      for (int edge = 12; edge > 0; --edge) {
        painter.fillRect(place.adjusted(-edge, -edge, edge, edge), QColor(31, 43, 43, 6));
      }
    }
    painter.drawPixmap(place, form->grab());
  }
  return picture;
}

}  // namespace tavoline
