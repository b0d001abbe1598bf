#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/schema/Schema.h"
#include "data/value/Value.h"

/// What goes between a source of rows and a store in the making.
namespace tavoline::tool {

using Columns = std::vector<const schema::Column*>;

/// Takes the rows of an import in the order in which they are read.
class RowReceiver {
 public:
  virtual ~RowReceiver() = default;
  /// How many rows the source says to hold in all; may be wrong.
  virtual void expect(std::int64_t rows) = 0;
  /// The rows that follow are of `table`, their values in the order of `columns`: a part of the table's own.
  virtual void table(const schema::Table& table, const Columns& columns) = 0;
  virtual void row(std::vector<Value>& values) = 0;
  /// One French sentence about what the source lacks or has too many.
  virtual void remark(const std::string& sentence) = 0;
};

/// Where the rows of an import come from.
class RowSource {
 public:
  virtual ~RowSource() = default;
  /// Gives each of the schema's tables once, in any order, with its rows in their stored order. Throws
  /// StoreError for a source that is not whole.
  virtual void read(RowReceiver& receiver) = 0;
  /// Whether its pictures may stand within an object of another program.
  virtual bool wrapsPictures() const = 0;
};

}  // namespace tavoline::tool
