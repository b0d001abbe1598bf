#include "toolkit/forms/Application.h"

#include "toolkit/forms/Guard.h"

namespace tavoline {

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    tellLater(std::current_exception());
    return false;
  }
}

}  // namespace tavoline
