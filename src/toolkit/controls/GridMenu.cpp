#include "toolkit/controls/GridMenu.h"

#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QMenu>

namespace tavoline {

GridMenu::GridMenu(QTableView& grid, std::function<void(const QModelIndex&)> standOn)
    : QObject(&grid), grid_(grid), viewport_(grid.viewport()), standOn_(std::move(standOn)) {
  grid.installEventFilter(this);
  viewport_->installEventFilter(this);
}

void GridMenu::open(QPoint global) {
  const QModelIndex index = grid_.indexAt(viewport_->mapFromGlobal(global));
  if (!index.isValid()) return;
  standOn_(index);
  popUp(grid_, global);
}

void GridMenu::openAt(QTableView& grid, const QWidget& button) {
  if (grid.model()->rowCount() > 0) popUp(grid, button.mapToGlobal(QPoint(0, button.height())));
}

void GridMenu::popUp(QTableView& grid, QPoint global) {
  auto* menu = new QMenu(&grid);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(grid.actions());
  menu->popup(global);
}

// The grid and its viewport send events to their very end: they are asked for more only in those that a
// living one gets.
bool GridMenu::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ActionAdded) viewport_->grabGesture(Qt::TapAndHoldGesture);
  if (watched != viewport_) return false;
  if (event->type() == QEvent::ContextMenu) {
    if (grid_.actions().isEmpty()) return false;
    open(static_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
  }
  if (event->type() != QEvent::Gesture) return false;
  const QGesture* hold = static_cast<QGestureEvent*>(event)->gesture(Qt::TapAndHoldGesture);
  if (!hold || hold->state() != Qt::GestureFinished) return false;
  open(hold->hotSpot().toPoint());
  return true;
}

}  // namespace tavoline
