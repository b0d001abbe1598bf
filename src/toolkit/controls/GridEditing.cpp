#include <QtGui/QFocusEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include "data/value/Text.h"
#include "toolkit/controls/DBGrid.h"
#include "toolkit/controls/GridModel.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

void DBGrid::EditCell(std::string_view field) {
  sync();
  const auto& columns = model_->shownColumns();
  for (std::size_t column = 0; column < columns.size(); ++column) {
    if (!sameName(columns[column].field, field)) continue;
    const QModelIndex cell = model_->index(model_->current(), int(column));
    if (!isEnabled() || !(cell.flags() & Qt::ItemIsEditable)) return;
    QTableView::setFocus();
    setCurrentIndex(cell);
    scrollTo(cell);
    edit(cell);
    return;
  }
}

std::string DBGrid::SelectedField() const {
  const QModelIndex cell = currentIndex();
  return cell.isValid() ? model_->shownColumns()[std::size_t(cell.column())].field : std::string();
}

void DBGrid::commitData(QWidget* editor) {
  const QModelIndex cell = currentIndex();
  auto* input = qobject_cast<QLineEdit*>(editor);
  if (!input || !cell.isValid()) return QTableView::commitData(editor);
  if (rowsStale_) return;  // its row was given up, or is another by now
  // A box took the focus: what is typed waits in its cell until the box has gone.
  if (const QWidget* box = QApplication::activeModalWidget(); box && box != window()) {
    refused_ = true;
    return;
  }
  refused_ = !model_->setData(cell, input->text(), Qt::EditRole);
}

// What was refused stays in its cell, which keeps the caret where Enter was pressed.
void DBGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool reverted = hint == QAbstractItemDelegate::RevertModelCache;
  if (std::exchange(refused_, false) && !reverted) return;
  const std::string field = SelectedField();
  QTableView::closeEditor(editor, hint);
  markStale();
  if (hint == QAbstractItemDelegate::SubmitModelCache && OnCellEnter) guarded([&] { OnCellEnter(field); });
}

// Behind a box the window gives the focus to the grid, where the caret stood in one of its cells.
void DBGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  if (state() != QAbstractItemView::EditingState || event->reason() != Qt::ActiveWindowFocusReason) return;
  if (QWidget* editor = indexWidget(currentIndex())) editor->setFocus();
}

void DBGrid::giveUpPending() {
  if (state() != QAbstractItemView::EditingState || Displaying::now()) return;
  const auto* input = qobject_cast<QLineEdit*>(indexWidget(currentIndex()));
  if (input) model_->write(currentIndex(), input->text());
}

// The row is another one now, or gone: the cell that is being typed in is closed with the next look at it.
void DBGrid::dropPending() {
  rowsStale_ = true;
  markStale();
}

}  // namespace tavoline
