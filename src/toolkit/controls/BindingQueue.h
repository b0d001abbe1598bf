#pragma once

#include <QtCore/QObject>
#include <deque>

namespace tavoline {

class Binding;

/// The controls that wait for the event loop to come round, and the watch over their being shown.
class BindingQueue : public QObject {
 public:
  static BindingQueue& instance();

  void add(Binding* control);
  void remove(Binding* control);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* widget, QEvent* event) override;

 private:
  explicit BindingQueue(QObject* parent) : QObject(parent) {}
  void pullAll();

  std::deque<Binding*> waiting_;
  bool posted_ = false;
};

}  // namespace tavoline
