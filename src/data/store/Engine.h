#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/schema/Schema.h"
#include "data/sql/Dialect.h"

namespace tavoline {

/// One thing that a store is made of.
struct Definition {
  enum class Kind { Table, Key, Index, Function, Trigger };
  Kind kind = Kind::Table;
  std::string name;
  std::string text;  ///< The statement that makes it.
};

/// One kind of store: all words in which its statements and its definitions differ from those of another.
/// What it says in French of its own failures stands beside it, in the folder of the engine.
class Engine : public sql::Dialect {
 public:
  /// Type of the hidden column `rid`: given by the engine, in order of insertion, never given twice.
  virtual std::string rowNumberType() const = 0;
  virtual std::string typeName(const schema::Column& column) const = 0;
  /// A column of an index that serves `order by` as this engine writes it.
  virtual std::string indexTerm(std::string_view column) const = 0;
  /// What counts the rows written to each table, in the order in which it is made: the table of the counts,
  /// and what keeps them.
  virtual std::vector<Definition> counting() const = 0;
};

}  // namespace tavoline
