#pragma once

#include <QtCore/QBasicTimer>

#include "toolkit/controls/Label.h"

namespace tavoline {

/// A text that moves by a timer, and only while it is visible.
class MovingLabel : public Label {
  Q_OBJECT

 public:
  using Label::Label;

 protected:
  virtual void begin() = 0;    ///< It comes to sight: starts the timer.
  virtual void advance() = 0;  ///< The timer has run.
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

  QBasicTimer timer_;
};

/// A text that blinks. It holds its caption all the time.
class BlinkingLabel : public MovingLabel {
  Q_OBJECT

 public:
  using MovingLabel::MovingLabel;

 protected:
  void begin() override;
  void advance() override;
  void paintEvent(QPaintEvent* event) override;
  bool ofAnyLength() const override { return true; }

 private:
  bool dark_ = false;
};

/// A heading that runs through its room from right to left.
class RunningLabel : public MovingLabel {
  Q_OBJECT

 public:
  using MovingLabel::MovingLabel;
  QSize minimumSizeHint() const override;  ///< It needs its height only.

 protected:
  void begin() override;
  void advance() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  int offset_ = 0;  // pixels that it has run from its start
};

/// The time of day, "21:45".
class ClockLabel : public MovingLabel {
  Q_OBJECT

 public:
  using MovingLabel::MovingLabel;

 protected:
  void begin() override { advance(); }
  void advance() override;  // and again with the next minute
};

}  // namespace tavoline
