#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <functional>

namespace tavoline {

/// Does a chore while the user does nothing: `rest` milliseconds after his last touch, click or key, and
/// again after each further rest, until he comes back. So chores never stand in the way of a tap. And tells
/// of the end of each gesture, when all that it started is done.
class IdleWatch : public QObject {
 public:
  explicit IdleWatch(
      std::function<void()> chore, std::function<void()> gestureDone = [] {}, int rest = 3000);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QTimer rest_;
};

}  // namespace tavoline
