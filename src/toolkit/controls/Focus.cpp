#include "toolkit/controls/Focus.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

#include "data/value/Errors.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

void focusControl(QWidget& control) {
  const bool screenVisible = control.window()->isVisible() && !control.window()->isHidden();
  bool reachable = control.isEnabled();
  for (QWidget* w = &control; w && !w->isWindow(); w = w->parentWidget()) {
    if (w->isHidden() && !w->inherits("tavoline::TForm")) reachable = false;
  }
  if (screenVisible && !reachable) {
    throw FocusError(
        "Le champ qui suit ne se remplit pas pour le moment : il est désactivé ou masqué. Continuez avec un "
        "autre champ.",
        control.objectName().toStdString());
  }
  control.setFocus(Qt::OtherFocusReason);
}

void paintRed(QWidget& control, bool on) {
  if (control.property("red").toBool() == on) return;
  control.setProperty("red", on);
  control.style()->unpolish(&control);
  control.style()->polish(&control);
}

bool leavesControl(const QFocusEvent& event) {
  switch (event.reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
      return false;
    default:
      return true;
  }
}

bool pressesDefault(QKeyEvent& event, const QWidget& input) {
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
  for (QPushButton* button : input.window()->findChildren<QPushButton*>()) {
    if (!button->isDefault() || !button->isVisible() || !button->isEnabled()) continue;
    event.accept();
    button->click();
    return true;
  }
  return false;
}

bool pathKey(QKeyEvent& event, const std::function<void()>& enter, const std::function<void()>& up,
             const std::function<void()>& down) {
  const std::function<void()>* step = nullptr;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      step = &enter;
      break;
    case Qt::Key_Up:
      step = &up;
      break;
    case Qt::Key_Down:
      step = &down;
      break;
    default:
      return false;
  }
  if (!*step) return false;
  event.accept();
  guarded(*step);
  return true;
}

}  // namespace tavoline
