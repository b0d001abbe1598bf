#include "toolkit/controls/TouchKey.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QTouchEvent>

namespace tavoline {

TouchKey::TouchKey(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {
  setAttribute(Qt::WA_AcceptTouchEvents);
}

bool TouchKey::event(QEvent* event) {
  const bool begins = event->type() == QEvent::TouchBegin, ends = event->type() == QEvent::TouchEnd;
  if (event->type() == QEvent::TouchUpdate) return event->accept(), true;
  if (event->type() == QEvent::TouchCancel) return setDown(false), true;
  if (!begins && !ends) return QPushButton::event(event);
  const auto* touch = static_cast<const QTouchEvent*>(event);
  const QEventPoint& finger = touch->points().first();
  QMouseEvent press(begins ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, finger.position(),
                    finger.globalPosition(), Qt::LeftButton, begins ? Qt::LeftButton : Qt::NoButton,
                    Qt::NoModifier, touch->pointingDevice());
  begins ? mousePressEvent(&press) : mouseReleaseEvent(&press);
  event->accept();
  return true;
}

}  // namespace tavoline
