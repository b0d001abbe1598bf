#include "toolkit/forms/Docking.h"

#include <QtGui/QResizeEvent>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "toolkit/forms/TForm.h"

namespace tavoline {

Docking::Docking(QWidget* panel) : QObject(panel) {
  panel->installEventFilter(this);
}

Docking* Docking::of(QWidget* panel) {
  for (QObject* child : panel->children()) {
    if (auto* docking = dynamic_cast<Docking*>(child)) return docking;
  }
  return new Docking(panel);
}

void Docking::open(TForm* form) {
  std::erase(open_, form);
  open_.push_back(form);
  showTop();
}

void Docking::close(TForm* form) {
  std::erase(open_, form);
  showTop();
}

void Docking::showTop() {
  if (OnTop) OnTop(open_.empty() ? nullptr : open_.back());
  if (open_.empty()) return;
  TForm* top = open_.back();
  const bool comesToLight = !top->isVisible();
  top->setGeometry(top->parentWidget()->contentsRect());
  top->show();
  top->raise();
  for (TForm* form : open_) {
    if (form != top) form->hide();
  }
  if (QWidget* last = top->focusWidget(); comesToLight && last) last->setFocus();
}

bool Docking::eventFilter(QObject* panel, QEvent* event) {
  if (event->type() == QEvent::Resize && !open_.empty()) {
    open_.back()->setGeometry(static_cast<QWidget*>(panel)->contentsRect());
  }
  return false;
}

}  // namespace tavoline
