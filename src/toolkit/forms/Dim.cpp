#include "toolkit/forms/Dim.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "toolkit/forms/Forms.h"

namespace tavoline {

namespace {

class Layer : public QWidget {
 public:
  explicit Layer(QWidget* under) : QWidget(under) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(under->rect());
    under->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* under, QEvent* event) override {
    if (event->type() == QEvent::Resize) setGeometry(static_cast<QWidget*>(under)->rect());
    return false;
  }
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), QColor(20, 28, 28, 90)); }
};

bool isModal(const QObject& object) {
  if (!object.isWidgetType()) return false;
  const auto& widget = static_cast<const QWidget&>(object);
  return widget.isWindow() && widget.windowModality() != Qt::NonModal;
}

}  // namespace

Dim::Dim() : QObject(QCoreApplication::instance()) {
  QCoreApplication::instance()->installEventFilter(this);
}

Dim& Dim::instance() {
  static QPointer<Dim> dim;
  if (!dim) dim = new Dim;
  return *dim;
}

bool Dim::eventFilter(QObject* watched, QEvent* event) {
  if (event->spontaneous()) return false;
  if (event->type() == QEvent::Show && isModal(*watched)) {
    modal_.insert(watched);
    connect(watched, &QObject::destroyed, this, [this](const QObject* gone) {
      modal_.remove(gone);
      update();
    });
    update();
  } else if (event->type() == QEvent::Hide && modal_.remove(watched)) {
    watched->disconnect(this);
    update();
  }
  return false;
}

void Dim::update() {
  if (modal_.isEmpty()) {
    delete layer_.data();
    return;
  }
  TForm* first = Forms::all().empty() ? nullptr : Forms::all().front();
  if (layer_ || !first || modal_.contains(first)) return;
  layer_ = new Layer(first);
  layer_->show();
  layer_->raise();
}

}  // namespace tavoline
