#pragma once

#include <map>
#include <optional>

#include "data/dataset/TableRow.h"

namespace tavoline {

/// What a dataset wrote since Open, and what it keeps of a version that it has let go of, laid over the rows
/// of its snapshot: changed and kept rows in their old places, deleted ones gone, inserted ones behind the
/// last in the order of their insertion. The filter is evaluated in memory for these few.
class OwnWrites {
 public:
  /// Both must outlive it.
  OwnWrites(const RowOrder& order, const std::vector<sql::Item>& columns)
      : order_(order), columns_(columns) {}

  void filter(sql::ExprPtr resolved) { filter_ = std::move(resolved); }
  bool filtered() const { return filter_ != nullptr; }
  bool visible(const TableRow& row) const;

  void change(TableRow row);  ///< Of the snapshot, or inserted here.
  void erase(const TableRow& row);
  void insert(TableRow row);  ///< Its number is above all others.
  /// A row of the snapshot that goes on to show what was read, whatever later versions have in its place.
  void keep(const TableRow& row);

  /// A row changed or inserted here, visible or not; null for any other, and for a deleted one.
  TableRow* find(RowId rid);

  // Rows of the snapshot
  bool changed(RowId rid) const { return changes_.contains(rid); }  ///< Or deleted.
  std::vector<const TableRow*> changedRows() const;                 ///< Visible ones, in order.
  /// A page's rows with the changed ones among them taken out and put in as far as they are visible and stand
  /// between the beginning of the reading and `end` (null: all that follow).
  std::vector<TableRow> laidOver(std::vector<TableRow> page, const Reading& reading, const RowKey* end) const;

  // Inserted rows
  bool inserted(RowId rid) const { return inserted_.contains(rid); }
  std::optional<RowId> firstFrom(RowId rid) const;   ///< The first visible one from this number on.
  std::optional<RowId> lastBefore(RowId rid) const;  ///< The last visible one before this number.
  std::vector<RowId> insertedRows() const;           ///< All, visible or not, ascending.

  /// Everything stands in the snapshot now, the inserted rows among the others.
  void clear();
  /// The same, but for the inserted rows, which stay behind the last; their values are to be put in by
  /// `reread` before anything else is asked.
  void age();
  bool aged() const { return aged_; }
  void reread(std::vector<TableRow> rows);  ///< Those that are not among them have gone.

 private:
  const RowOrder& order_;
  const std::vector<sql::Item>& columns_;
  sql::ExprPtr filter_;
  struct Change {
    std::optional<TableRow> row;  // absent: deleted
  };
  std::map<RowId, Change> changes_;
  std::map<RowId, TableRow> inserted_;
  bool aged_ = false;
};

}  // namespace tavoline
