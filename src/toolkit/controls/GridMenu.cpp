#include "toolkit/controls/GridMenu.h"

#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QMenu>

namespace tavoline {

GridMenu::GridMenu(QTableView& grid, std::function<void(const QModelIndex&)> standOn)
    : QObject(&grid), grid_(grid), standOn_(std::move(standOn)) {
  grid.installEventFilter(this);
  grid.viewport()->installEventFilter(this);
}

void GridMenu::open(QPoint global) {
  const QModelIndex index = grid_.indexAt(grid_.viewport()->mapFromGlobal(global));
  if (!index.isValid()) return;
  standOn_(index);
  auto* menu = new QMenu(&grid_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(grid_.actions());
  menu->popup(global);
}

bool GridMenu::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ActionAdded) grid_.viewport()->grabGesture(Qt::TapAndHoldGesture);
  if (watched != grid_.viewport() || grid_.actions().isEmpty()) return false;
  if (event->type() == QEvent::ContextMenu) {
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
