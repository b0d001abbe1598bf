#include "toolkit/forms/Taps.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QPointerEvent>
#include <QtGui/QStyleHints>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace tavoline {

namespace {

constexpr int fresh = 250;        // ms in which a screen takes no press where it was opened from
constexpr int samePlace = 40;     // pixels between two taps of one finger, at most
constexpr int longestTap = 8000;  // ms after which a finger counts as lifted, should its release be lost

/// A screen or a box, and not a menu, a list that drops down or a tooltip.
bool isScreen(const QObject& object) {
  if (!object.isWidgetType()) return false;
  const auto& widget = static_cast<const QWidget&>(object);
  return widget.isWindow() && (widget.windowType() == Qt::Window || widget.windowType() == Qt::Dialog);
}

QPoint placeOf(QEvent* event) {
  const auto& points = static_cast<QPointerEvent*>(event)->points();
  return points.isEmpty() ? QPoint() : points.first().globalPosition().toPoint();
}

}  // namespace

Taps::Taps() : QObject(QCoreApplication::instance()) {
  QCoreApplication::instance()->installEventFilter(this);
}

Taps& Taps::instance() {
  static QPointer<Taps> taps;
  if (!taps) taps = new Taps;
  return *taps;
}

void Taps::changed() {
  if (!byFinger_) return;
  changed_ = true;
  changedAt_.start();
}

bool Taps::secondOfOne(QPoint place) const {
  if (!changed_ || (place - place_).manhattanLength() > samePlace) return false;
  return changedAt_.elapsed() < fresh ||
         pressedAt_.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
}

/// True if the press is to be dropped.
bool Taps::down(QPoint place) {
  if (dropping_ || secondOfOne(place)) return dropping_ = true;
  place_ = place;
  byFinger_ = down_ = true;
  changed_ = false;
  pressedAt_.start();
  return false;
}

bool Taps::lifted() {
  down_ = false;
  for (const Waiting& waiting : std::exchange(waiting_, {}))
    QTimer::singleShot(0, waiting.owner, waiting.act);
  return std::exchange(dropping_, false);
}

void Taps::whenLifted(QObject* owner, const std::function<void()>& act) {
  Taps& taps = instance();
  if (!taps.down_ || taps.pressedAt_.elapsed() > longestTap) return act();
  taps.waiting_.push_back({owner, act});
  connect(owner, &QObject::destroyed, &taps, [owner] {
    std::erase_if(instance().waiting_, [owner](const Waiting& waiting) { return waiting.owner == owner; });
  });
}

// Presses are taken at the window, before any control hears of them.
bool Taps::eventFilter(QObject* watched, QEvent* event) {
  bool drop = false;
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
      if (!event->spontaneous() && isScreen(*watched)) changed();
      return false;
    case QEvent::KeyPress:
      byFinger_ = false;
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
      if (watched->isWindowType()) drop = down(placeOf(event));
      break;
    case QEvent::MouseMove:
    case QEvent::TouchUpdate:
      if (watched->isWindowType()) drop = dropping_;
      break;
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
      if (watched->isWindowType()) drop = lifted();
      break;
    default:
      return false;
  }
  if (drop) event->accept();
  return drop;
}

}  // namespace tavoline
