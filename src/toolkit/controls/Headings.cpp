#include "toolkit/controls/Headings.h"

#include <QtCore/QTimerEvent>
#include <QtGui/QPainter>

#include "data/value/Clock.h"

namespace tavoline {

namespace {
constexpr int blinkPeriod = 700;  // ms between on and off
constexpr int runPeriod = 40;     // ms between two steps
constexpr int runStep = 1;        // pixels
}  // namespace

void MovingLabel::showEvent(QShowEvent* event) {
  Label::showEvent(event);
  begin();
}

void MovingLabel::hideEvent(QHideEvent* event) {
  timer_.stop();
  Label::hideEvent(event);
}

void MovingLabel::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return Label::timerEvent(event);
  advance();
}

void BlinkingLabel::begin() {
  dark_ = false;
  timer_.start(blinkPeriod, Qt::CoarseTimer, this);
}

void BlinkingLabel::advance() {
  dark_ = !dark_;
  update();
}

void BlinkingLabel::paintEvent(QPaintEvent* event) {
  if (!dark_) MovingLabel::paintEvent(event);
}

QSize RunningLabel::minimumSizeHint() const {
  return {0, MovingLabel::minimumSizeHint().height()};
}

void RunningLabel::begin() {
  offset_ = 0;
  timer_.start(runPeriod, this);
}

void RunningLabel::advance() {
  offset_ += runStep;
  update();
}

void RunningLabel::paintEvent(QPaintEvent*) {
  const QRect room = contentsRect();
  const QString caption = text().trimmed();
  const int length = fontMetrics().horizontalAdvance(caption);
  const int round = room.width() + length;  // from its first letter coming in to its last one going out
  if (round <= 0) return;
  // It starts whole at the left edge, so that it can be read at once.
  const int left = room.left() + room.width() - (room.width() + offset_) % round;
  QPainter painter(this);
  painter.setClipRect(room);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(QRect(left, room.top(), length + 1, room.height()), Qt::AlignVCenter, caption);
}

void ClockLabel::advance() {
  const DateTime now = Clock::now();
  setText(QStringLiteral("%1:%2")
              .arg(now.hour(), 2, 10, QLatin1Char('0'))
              .arg(now.minute(), 2, 10, QLatin1Char('0')));
  timer_.start((60 - now.second()) * 1000, Qt::CoarseTimer, this);
}

}  // namespace tavoline
