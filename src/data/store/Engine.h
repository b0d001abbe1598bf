#pragma once

#include <string>

#include "data/schema/Schema.h"
#include "data/sql/Dialect.h"

namespace tavoline {

/// One kind of store: all words in which its statements and its definitions differ from those of another.
/// What it says in French of its own failures stands beside it, in the folder of the engine.
class Engine : public sql::Dialect {
 public:
  /// Type of the hidden column `rid`: given by the engine, in order of insertion, never given twice.
  virtual std::string rowNumberType() const = 0;
  virtual std::string typeName(const schema::Column& column) const = 0;
};

}  // namespace tavoline
