#include "toolkit/controls/GridModel.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtGui/QColor>

#include "toolkit/controls/GridCells.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

Qt::Alignment columnAlignment(const GridColumn& column) {
  return Qt::AlignVCenter | (column.isNumber() || column.rightAligned ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace

void DBGrid::Model::setColumns(const QStringList& lines) {
  beginResetModel();
  columns_.clear();
  for (const QString& line : lines) columns_.push_back(GridColumn::parse(line));
  endResetModel();
}

void DBGrid::Model::reread() {
  Dataset* rows = grid_.dataset();
  const bool open = rows && rows->Active();
  for (GridColumn& column : columns_) {
    column.index = open ? rows->ColumnIndex(column.field) : -1;
    if (column.index >= 0) column.type = rows->Columns()[std::size_t(column.index)].type;
  }
  current_ = open ? rows->RecordNumber() : -1;
  setRows(open ? int(rows->RecordsCounted()) : 0);
}

void DBGrid::Model::setRows(int rows) {
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
}

QVariant DBGrid::Model::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return columns_[std::size_t(section)].title;
  if (role != Qt::TextAlignmentRole) return {};
  return int(columnAlignment(columns_[std::size_t(section)])) | Qt::TextWordWrap;
}

QVariant DBGrid::Model::data(const QModelIndex& index, int role) const {
  const GridColumn& column = columns_[std::size_t(index.column())];
  switch (role) {
    case Qt::DisplayRole:
      return reading([&] { return QString::fromStdString(column.shown(value(index.row(), column))); });
    case Qt::EditRole:
      return reading([&] { return QString::fromStdString(value(index.row(), column).text()); });
    case Qt::TextAlignmentRole:
      return int(columnAlignment(column));
    case Qt::BackgroundRole:
      if (index.row() == marked_) return QColor(theme().accent);
      return reading([&] { return colour(index.row(), column); });
    case FigureRole:
      return column.isFigure();
    case Qt::ToolTipRole:
      return cut(index) ? data(index, Qt::DisplayRole) : QVariant();
    default:
      return {};
  }
}

void DBGrid::Model::showInserted(bool shown) {
  if (shown == inserted_) return;
  if (shown) {
    beginInsertRows({}, rows_, rows_);
    inserted_ = true;
    endInsertRows();
  } else {
    beginRemoveRows({}, rows_, rows_);
    inserted_ = false;
    endRemoveRows();
  }
}

bool DBGrid::Model::cut(const QModelIndex& index) const {
  const int room = grid_.columnWidth(index.column()) - 2 * gridPadding(grid_);
  return grid_.fontMetrics().horizontalAdvance(data(index, Qt::DisplayRole).toString()) > room;
}

bool DBGrid::Model::setData(const QModelIndex& index, const QVariant& typed, int role) {
  return role == Qt::EditRole && guardedToTellAfter([&] { write(index, typed.toString()); });
}

// The dataset may ask for the text while it is being written.
void DBGrid::Model::write(const QModelIndex& cell, const QString& typed) {
  if (writing_ || typed == data(cell, Qt::EditRole).toString()) return;
  const QScopedValueRollback<bool> once(writing_, true);
  const GridColumn& column = columns_[std::size_t(cell.column())];
  Dataset& rows = *grid_.dataset();
  if (!isInserted(cell.row()) && rows.RecordNumber() != cell.row()) rows.MoveTo(std::size_t(cell.row()));
  rows.Edit();
  const bool empty = typed.isEmpty() && column.type != FieldType::Text;
  rows.SetFieldValue(column.field, empty ? Value() : Value(typed.toStdString()));
}

Qt::ItemFlags DBGrid::Model::flags(const QModelIndex& index) const {
  const bool writable = !grid_.readOnly_ && columns_[std::size_t(index.column())].writable;
  return QAbstractTableModel::flags(index) | (writable ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

Value DBGrid::Model::value(int record, const GridColumn& column) const {
  Dataset& rows = *grid_.dataset();
  if (column.index < 0 || !rows.Active()) return {};
  // The row being edited shows its values as edited.
  const bool edited = record == current_ && rows.State() == DatasetState::Edit && !rows.RowGone();
  if (isInserted(record) || edited) {
    const Displaying display;
    return rows.FieldValue(column.field);
  }
  return rows.ValueAt(std::size_t(record), std::size_t(column.index));
}

QVariant DBGrid::Model::colour(int record, const GridColumn& column) const {
  if (!grid_.OnCellColour || !grid_.dataset()->Active() || isInserted(record)) return {};
  const Displaying display;
  const QColor wanted = grid_.OnCellColour(*grid_.dataset(), std::size_t(record), column.field);
  return wanted.isValid() ? QVariant(wanted) : QVariant();
}

template <class Read>
QVariant DBGrid::Model::reading(Read read) const {
  try {
    return read();
  } catch (...) {
    auto* self = const_cast<Model*>(this);
    if (self->rows_ > 0) tellLater(std::current_exception());
    QTimer::singleShot(0, self, [self] { self->setRows(0); });
    return {};
  }
}

}  // namespace tavoline
