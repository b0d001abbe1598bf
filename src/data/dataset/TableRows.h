#pragma once

#include <map>
#include <optional>

#include "data/dataset/OwnWrites.h"
#include "data/dataset/RowList.h"
#include "data/dataset/TablePages.h"

namespace tavoline {

/// The visible rows of a table cursor: the pages of its snapshot with what it wrote laid over them, and the
/// list of their numbers, made for just who counts or jumps. Knows no position. Throws StoreError, and then
/// shows what it showed.
class TableRows {
 public:
  explicit TableRows(CursorSource source);

  const TablePages& pages() const { return pages_; }
  /// What was written here, its values up to date.
  OwnWrites& own();
  RowList& list();

  void filter(const sql::ExprPtr& filter);

  /// Rows of the snapshot, changed ones among them: some `size` of a reading, and whether more follow.
  struct Page {
    std::vector<TableRow> rows;  ///< In the order of reading; empty only if there are none.
    bool exhausted = false;
  };
  Page read(Reading reading, std::size_t size);
  std::optional<TableRow> find(RowId rid);  ///< Also a hidden one; none if it has gone.
  /// The first that holds a value of the column's type.
  std::optional<TableRow> search(std::size_t column, const Value& value);
  /// By its number, which the list must have.
  TableRow& at(std::size_t record);

  // Written just now, to the store too
  void insert(TableRow row);
  void change(const TableRow& row, bool wasHidden);  ///< By the filter, until now.
  void erase(const TableRow& row);

  /// Newer values for the same rows. True if rows inserted here stand among the others from now on, as they
  /// do in the order of insertion; in another order they stay behind the last.
  bool refresh(std::shared_ptr<const Snapshot> newer);
  /// As Cursor::release; `inSight` are rows that the cursor shows.
  void release(const std::shared_ptr<const Snapshot>& newest, const std::vector<const TableRow*>& inSight);

 private:
  Page listed(const Reading& reading, std::size_t size);
  void keep(std::vector<TableRow> rows);

  TablePages pages_;
  OwnWrites own_;
  std::optional<RowList> list_;
  std::map<RowId, TableRow> read_;  // of the snapshot, for those who ask by number
};

}  // namespace tavoline
