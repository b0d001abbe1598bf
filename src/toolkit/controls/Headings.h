#pragma once

#include <QtCore/QBasicTimer>

#include "toolkit/controls/Label.h"

namespace tavoline {

/// A text that blinks while it is visible. It holds its caption all the time.
class BlinkingLabel : public Label {
  Q_OBJECT

 public:
  using Label::Label;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool ofAnyLength() const override { return true; }

 private:
  QBasicTimer timer_;
  bool dark_ = false;
};

/// A heading that runs through its room from right to left while it is visible.
class RunningLabel : public Label {
  Q_OBJECT

 public:
  using Label::Label;
  QSize minimumSizeHint() const override;  ///< It needs its height only.

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QBasicTimer timer_;
  int offset_ = 0;  // pixels that it has run from its start
};

/// The time of day, "21:45", while it is visible.
class ClockLabel : public Label {
  Q_OBJECT

 public:
  explicit ClockLabel(QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void tell();  // and again with the next minute
  QBasicTimer timer_;
};

}  // namespace tavoline
