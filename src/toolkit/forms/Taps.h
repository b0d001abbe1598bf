#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <functional>
#include <vector>

namespace tavoline {

/// The finger on the glass, followed from the first screen on. A tap that opens or closes a screen or a box
/// counts once: what comes down at its place within the time of a double click, or within a quarter of a
/// second after the screen came or went, is dropped. All other taps count each.
class Taps : public QObject {
 public:
  static Taps& instance();

  /// A screen came, went, or came to light. Windows and boxes are noticed without being told.
  static void screenChanged() { instance().changed(); }
  /// Runs `act` now, or behind the click of the finger that is down, so that nothing is rebuilt under it.
  /// Not run if `owner` is gone by then.
  static void whenLifted(QObject* owner, const std::function<void()>& act);
  /// The next press is no part of a double tap, as if its user had taken his time.
  static void forget() { instance().changed_ = false; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Taps();
  void changed();
  bool down(QPoint place);
  bool lifted();
  bool secondOfOne(QPoint place) const;

  struct Waiting {
    QObject* owner;
    std::function<void()> act;
  };
  QPoint place_;           // of the last press, on the display
  bool byFinger_ = false;  // a press came after the last key
  bool down_ = false;
  bool dropping_ = false;  // from a press that is dropped to its release
  bool changed_ = false;   // a screen came or went behind the last press
  QElapsedTimer pressedAt_, changedAt_;
  std::vector<Waiting> waiting_;
};

}  // namespace tavoline
