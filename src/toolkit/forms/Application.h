#pragma once

#include <QtWidgets/QApplication>

namespace tavoline {

/// The application, and the last net under everything that Qt calls: timers, slots, events, filters, models,
/// painting. What is thrown there ends that call and is shown in a box; the program goes on. Handlers stand
/// in nets of their own (see guarded), which also know what to undo. Windows follow a display that becomes
/// smaller: none stays where nobody reaches its buttons.
class Application : public QApplication {
 public:
  Application(int& argc, char** argv);
  bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace tavoline
