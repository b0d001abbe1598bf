#include "toolkit/forms/Application.h"

#include <QtGui/QScreen>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

QPoint placeWithinDisplay(const QWidget& window) {
  const QRect display = window.screen()->availableGeometry();
  const QRect frame = window.frameGeometry();
  return {std::max(display.left(), std::min(frame.left(), display.right() + 1 - frame.width())),
          std::max(display.top(), std::min(frame.top(), display.bottom() + 1 - frame.height()))};
}

void bringWindowsBack() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible() || (window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)))
      continue;
    const QPoint place = placeWithinDisplay(*window);
    if (place != window->pos()) window->move(place);
  }
}

void follow(const QScreen* display) {
  QObject::connect(display, &QScreen::availableGeometryChanged, qApp, bringWindowsBack);
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  for (const QScreen* display : screens()) follow(display);
  connect(this, &QGuiApplication::screenAdded, this, follow);
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    tellLater(std::current_exception());
    return false;
  }
}

}  // namespace tavoline
