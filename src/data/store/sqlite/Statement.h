#pragma once

#include <sqlite3.h>

#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::sqlite {

class Connection;

/// Finalizes itself.
struct Finalize {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Prepared statements that nobody is using, by their text.
struct IdleStatement {
  StatementHandle handle;
  std::uint64_t lastUse = 0;
};
using IdleStatements = std::unordered_multimap<std::string, IdleStatement>;

/// A prepared statement borrowed from a connection: nobody else steps it until it goes back, which it does by
/// itself, reset. Must not outlive the connection.
class Statement {
 public:
  Statement(Connection& owner, IdleStatements::node_type node) : owner_(&owner), node_(std::move(node)) {}
  Statement(Statement&& other) noexcept : owner_(other.owner_), node_(std::move(other.node_)) {}
  Statement& operator=(Statement&&) = delete;
  ~Statement();

  void bind(std::span<const Value> values);  ///< To ?1, ?2...; begins anew.
  void bind(std::initializer_list<Value> values) { bind(std::span(values.begin(), values.size())); }
  bool step();  ///< True on a row, false at the end. Throws StoreError.

  int columns() const { return sqlite3_column_count(handle()); }
  /// As `type`; what the file holds instead, where it does not convert.
  Value value(int column, FieldType type) const;
  std::int64_t integer(int column) const { return sqlite3_column_int64(handle(), column); }
  std::string text(int column) const;
  bool isNull(int column) const { return sqlite3_column_type(handle(), column) == SQLITE_NULL; }

 private:
  sqlite3_stmt* handle() const { return node_.mapped().handle.get(); }
  void bind(int number, const Value& value);

  Connection* owner_;
  IdleStatements::node_type node_;  // empty once moved from
};

}  // namespace tavoline::sqlite
