#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/sql/Ast.h"
#include "data/store/Catalog.h"

namespace tavoline::test {

/// The tables of a store, as its schema has them.
const Catalog& catalog();

/// A resolved select of `text`, narrowed by `filter`.
sql::Select select(std::string_view text, std::string_view filter = {});

/// A small cafeteria in memory, with the tables and indexes of a store and rows that every statement can tell
/// apart. The bare engine runs what the writer writes, so that nothing but the text and its values is tested.
class Cafeteria {
 public:
  Cafeteria();

  /// One line per row: the display texts of its items, joined by "|".
  std::vector<std::string> rows(const sql::Select& select, const sql::Parameters& parameters = {}) const;
  void run(const sql::Update& update, const sql::Parameters& parameters = {}) const;
  void run(const std::string& engineText) const;
  /// How the engine walks the tables: one step a line.
  std::vector<std::string> plan(const sql::Select& select) const;

 private:
  struct Close {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Prepared = std::unique_ptr<sqlite3_stmt, Close>;

  Prepared prepare(const std::string& text, const std::vector<Value>& values) const;
  bool step(sqlite3_stmt* statement) const;

  std::unique_ptr<sqlite3, Close> db_;
};

}  // namespace tavoline::test
