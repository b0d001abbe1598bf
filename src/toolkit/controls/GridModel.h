#pragma once

#include <QtCore/QAbstractTableModel>
#include <vector>

#include "toolkit/controls/DBGrid.h"
#include "toolkit/controls/GridColumn.h"

namespace tavoline {

/// The rows of a grid's dataset as its view asks for them. A cell shows its value as its column says; what an
/// edit begins with is exact. Throws nothing: a store that fails while it is read for painting empties the
/// grid and is told once.
class DBGrid::Model : public QAbstractTableModel {
 public:
  explicit Model(DBGrid& grid) : QAbstractTableModel(&grid), grid_(grid) {}

  void setColumns(const QStringList& lines);
  /// Counts the first rows and finds the columns of the dataset as it is open now. Only the rows that came or
  /// went are told: a reset would have the headings laid out and the grid painted twice more.
  void reread();
  void setRows(int rows);
  void setCurrent(int record) { current_ = record; }
  void showInserted(bool shown);  ///< The row that waits in insert state, behind all others.
  bool isInserted(int row) const { return inserted_ && row == rows_; }
  /// Writes what was typed in a cell; throws if its field refuses it. Nothing for the text that it has.
  void write(const QModelIndex& cell, const QString& typed);
  int current() const { return current_; }
  void setMarked(int record) { marked_ = record; }
  const std::vector<GridColumn>& shownColumns() const { return columns_; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : rows_ + inserted_;
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : int(columns_.size());
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& typed, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  Value value(int record, const GridColumn& column) const;
  bool cut(const QModelIndex& index) const;  // has no room for its whole text on one line
  QVariant colour(int record, const GridColumn& column) const;
  template <class Read>
  QVariant reading(Read read) const;

  DBGrid& grid_;
  std::vector<GridColumn> columns_;
  int rows_ = 0;
  bool inserted_ = false, writing_ = false;
  int current_ = -1, marked_ = -1;
};

}  // namespace tavoline
