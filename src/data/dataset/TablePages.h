#pragma once

#include <optional>

#include "data/dataset/Cursor.h"
#include "data/dataset/TableRow.h"

namespace tavoline {

/// The rows of a statement over one table as one version of the store has them, read in pages by key, or one
/// by one by number. Which rows these are is settled at Open: a newer version gives them newer values, and
/// loses those that have gone. Pictures are left out of pages and fetched one by one.
class TablePages {
 public:
  explicit TablePages(CursorSource source);
  TablePages(const TablePages&) = delete;
  TablePages& operator=(const TablePages&) = delete;

  const std::string& table() const { return tables_.front(); }
  const std::vector<sql::Item>& columns() const { return source_.select.items; }
  const RowOrder& order() const { return order_; }
  const Catalog& catalog() const { return *source_.catalog; }

  /// Rows that do not satisfy it (null: all do) are left out of pages. Throws, and then changes nothing.
  void filter(const sql::ExprPtr& filter);

  /// Some of the next `limit` rows, in the order of reading; fewer, or none, where others' rows stand
  /// between.
  struct Page {
    std::vector<TableRow> rows;
    bool exhausted = false;  ///< Nothing follows.
    RowKey end;              ///< How far it goes; unless exhausted.
  };
  /// Only rows that satisfy `extra`, a resolved condition, too.
  Page read(const Reading& reading, std::size_t limit, const sql::ExprPtr& extra = nullptr) const;
  /// Rows by their numbers, the filter not asked, in no order, those left out that have gone.
  std::vector<TableRow> find(const std::vector<RowId>& rids) const;
  /// A value of a row, which is read now if it was left out.
  const Value& fetched(TableRow& row, std::size_t column) const;

  /// Row numbers, all or the first `limit`, in order or in any that suits the engine; in order with the
  /// values of the order's columns behind them if `keys`. Others' rows are among them: see `member`.
  enum class Listing { AnyOrder, InOrder, WithKeys };
  std::unique_ptr<Rows> numbers(Listing listing, std::optional<std::size_t> limit = {}) const;
  bool member(RowId rid) const;

  /// Newer values for the same rows. `joining`, ascending and above all others, belong to them from now on:
  /// they were inserted here. Throws StoreError, and then changes nothing.
  void moveOn(std::shared_ptr<const Snapshot> newer, const std::vector<RowId>& joining);

  // Letting go of a version
  HeldVersion& version() { return source_.snapshot; }
  /// All rows of the statement, without regard to the filter, where they are few; pictures are left out.
  std::optional<std::vector<TableRow>> readAllIfFew() const;
  /// All rows are kept elsewhere: nothing but pictures is read from now on, until `moveOn`.
  void neverAskAgain() { exhausted_ = true; }
  /// The same rows belong to it in whatever version is read. Throws StoreError, and then changes nothing.
  void settleMembers();
  TableRow gone(RowId rid) const;  ///< Without values.

 private:
  sql::Select reading() const;
  TableRow rowOf(const Rows& rows) const;
  std::unique_ptr<Rows> ask(const sql::Select& select) const;

  CursorSource source_;
  std::vector<std::string> tables_;
  RowOrder order_;
  std::vector<std::size_t> readColumns_;  // of a page: all but pictures
  sql::ExprPtr filter_;
  sql::Select narrowed_;  // the statement under the filter

  // Once another version is read: the rows up to `ceiling_`, or of a statement with a condition of its own,
  // which newer values must not answer, those of `members_`; and those that joined since.
  std::optional<RowId> ceiling_;
  std::optional<std::vector<RowId>> members_;  // ascending, as are the joined
  std::vector<RowId> joined_;
  bool exhausted_ = false;
};

}  // namespace tavoline
