#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/dataset/HeldVersion.h"
#include "data/sql/Ast.h"
#include "data/store/Store.h"

namespace tavoline {

/// So many rows at most are kept in memory by a cursor that lets go of its version before it has read them.
inline constexpr std::size_t keptRows = 512;

/// The rows behind an open dataset: a position in the visible rows of one statement, on one snapshot, read as
/// they are asked for. The dataset owns it and adds states, pending values and listeners. Positions answer
/// false, and do not move, when there is no such row or the store fails.
class Cursor {
 public:
  virtual ~Cursor() = default;

  /// Visible rows are those that satisfy the filter (null: all). The position becomes the first, unread.
  /// Throws StatementError or ConversionError, and then changes nothing.
  virtual void filter(const sql::ExprPtr& filter) = 0;

  virtual bool first() = 0;
  virtual bool last() = 0;
  virtual bool next() = 0;
  virtual bool prior() = 0;
  /// Whether there is a current row; finds it if the position is still unread.
  virtual bool onRow() = 0;
  /// The stored row on which the position is known to stand; none before it is read, or without rows that are
  /// known one by one.
  virtual std::optional<RowId> standing() const { return std::nullopt; }
  /// Of the current row, which must exist.
  virtual Value value(std::size_t column) = 0;
  virtual std::vector<Value> values() = 0;  ///< Pictures left out (null) unless they were asked for.

  virtual std::size_t count() = 0;
  /// How many rows are counted yet: the first thousand at least, as far as there are so many.
  virtual std::size_t counted() { return count(); }
  /// Counts some `rows` more; whether all are counted.
  virtual bool countOn(std::size_t rows);
  virtual Value valueAt(std::size_t record, std::size_t column) = 0;
  virtual int record() = 0;  ///< -1 without a current row, or with one that the filter hides.
  virtual bool moveTo(std::size_t record) = 0;
  /// The first visible row that holds the value, which is of the column's type: stands on it, or tells its
  /// number, -1 for none, and stays.
  virtual bool locate(std::size_t column, const Value& value) = 0;
  virtual int recordOf(std::size_t column, const Value& value) = 0;

  /// Newer values for the same rows, whatever they now answer to the statement's own condition; the filter is
  /// asked of the newer ones. The position is kept as far as its row is still there. Throws StoreError, and
  /// then changes nothing.
  virtual void refresh(std::shared_ptr<const Snapshot> newer) = 0;
  /// Lets go of its version and shows the same as before: moves to `newest` if that has the same rows, or
  /// keeps in memory what was read, and everything if that is little. `newest` null: holds no version at all
  /// afterwards.
  virtual void release(const std::shared_ptr<const Snapshot>& newest) = 0;

  virtual bool updatable() const { return false; }
  /// Only on an updatable cursor. Columns are given as (index, value) of what is written; each is durable on
  /// return, and throws StoreError with nothing changed. The row written is current afterwards, also where
  /// the filter hides it, until the position moves; the row behind a deleted one, or else the one before.
  using Written = std::vector<std::pair<std::size_t, Value>>;
  virtual void insert(Store& store, const Written& fields);
  virtual void update(Store& store, const Written& fields);
  virtual void erase(Store& store);
};

/// What a cursor runs: a resolved statement and the parameters as they stood at Open.
struct CursorSource {
  sql::Select select;
  sql::Parameters parameters;
  HeldVersion snapshot;
  std::shared_ptr<const Catalog> catalog;
};

std::unique_ptr<Cursor> makeCursor(CursorSource source);

}  // namespace tavoline
