#include "shell/IdleWatch.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include "toolkit/forms/Guard.h"

namespace tavoline {

IdleWatch::IdleWatch(std::function<void()> chore, std::function<void()> gestureDone, int rest) {
  rest_.setInterval(rest);
  connect(&rest_, &QTimer::timeout, this, [chore = std::move(chore)] { guarded(chore); });
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [gestureDone = std::move(gestureDone)] { guarded(gestureDone); });
  QCoreApplication::instance()->installEventFilter(this);
  rest_.start();
}

bool IdleWatch::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::Wheel:
      rest_.start();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tavoline
