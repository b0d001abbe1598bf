#pragma once

#include <QtWidgets/QScroller>
#include <QtWidgets/QScrollerProperties>
#include <QtWidgets/QWidget>

namespace tavoline {

/// Lets a finger drag what a viewport shows; a short press still reaches what lies under it. ByTouch leaves
/// the mouse its own ways, double clicks among them; ByPointer takes drags by the mouse too. To be a member
/// of the control, so that it ends before the viewport does.
class FingerScroll {
 public:
  static constexpr auto ByTouch = QScroller::TouchGesture;
  static constexpr auto ByPointer = QScroller::LeftMouseButtonGesture;

  FingerScroll(QWidget* viewport, QScroller::ScrollerGestureType by, bool on = true)
      : viewport_(viewport), by_(by) {
    set(on);
  }
  ~FingerScroll() { set(false); }
  FingerScroll(const FingerScroll&) = delete;
  FingerScroll& operator=(const FingerScroll&) = delete;

  /// Whether a finger is down, or what it set going still moves.
  bool busy() const {
    return QScroller::hasScroller(viewport_) &&
           QScroller::scroller(viewport_)->state() != QScroller::Inactive;
  }
  /// Ends a movement that goes on after the finger has left.
  void stop() {
    if (QScroller::hasScroller(viewport_)) QScroller::scroller(viewport_)->stop();
  }
  void set(bool on) {
    if (on == on_) return;
    on_ = on;
    if (on) {
      QScroller::grabGesture(viewport_, by_);
      // A press shows at once, and is taken back when a drag begins.
      QScrollerProperties properties = QScroller::scroller(viewport_)->scrollerProperties();
      properties.setScrollMetric(QScrollerProperties::MousePressEventDelay, 0);
      QScroller::scroller(viewport_)->setScrollerProperties(properties);
    } else {
      QScroller::ungrabGesture(viewport_);
    }
  }

 private:
  QWidget* viewport_;
  QScroller::ScrollerGestureType by_;
  bool on_ = false;
};

}  // namespace tavoline
