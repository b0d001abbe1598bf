#pragma once

#include <optional>
#include <vector>

#include "data/sql/Ast.h"
#include "data/store/Store.h"

namespace tavoline {

/// Where a row stands: its values in the statement's order, then its row number.
using RowKey = std::vector<Value>;

struct TableRow {
  RowId rid = 0;
  std::vector<Value> values;
  std::vector<bool> unread;  ///< Pictures not fetched yet; empty: none.
  RowKey key;                ///< Of its place, which a change by this dataset does not move.
  bool gone = false;         ///< Stands without values in the place of one that was listed.
};

/// Where to begin reading, and which way: at an end, or at a key, its own row left out unless `inclusive`.
struct Reading {
  std::optional<RowKey> from;
  bool inclusive = true;
  bool backwards = false;
};

/// The order of the rows of a statement over one table: by the columns that it names, then by insertion.
class RowOrder {
 public:
  explicit RowOrder(const sql::Select& select);

  bool byInsertion() const { return terms_.empty(); }
  std::size_t columns() const { return terms_.size(); }
  RowKey keyOf(const std::vector<Value>& row, RowId rid) const;
  bool before(const RowKey& a, const RowKey& b) const;
  /// Whether a row at `key` comes in a reading at all.
  bool comes(const RowKey& key, const Reading& reading) const;

  /// The condition of the rows that come in a reading; null for all.
  sql::ExprPtr condition(const Reading& reading) const;
  std::vector<sql::Order> orderBy(bool backwards) const;
  std::vector<sql::Item> items() const;  ///< The columns of the order, for who reads keys only.

 private:
  struct Term {
    std::size_t column;  // of the statement
    sql::Item item;
    bool descending;
  };
  sql::ExprPtr beyond(const Reading& reading, std::size_t part) const;

  std::vector<Term> terms_;
  sql::ExprPtr rid_;
};

}  // namespace tavoline
