#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"

namespace tavoline {

/// A column as found in the store.
struct ColumnInfo {
  std::string name;
  FieldType type = FieldType::Text;
  int width = 0;       ///< Characters; 0 where the store sets no limit.
  Value defaultValue;  ///< What the store gives a new row that leaves the column out; null for none.
};

/// A table as found in the store. The hidden row number `rid` is not among its columns.
struct TableInfo {
  std::string name;
  std::vector<ColumnInfo> columns;

  const ColumnInfo* find(std::string_view column) const;  ///< Without regard to case; null if absent.
};

/// The tables of a store as they stood when they were read. The program never changes them.
class Catalog {
 public:
  Catalog() = default;
  explicit Catalog(std::vector<TableInfo> tables) : tables_(std::move(tables)) {}

  const TableInfo* find(std::string_view table) const;  ///< Without regard to case; null if absent.
  const std::vector<TableInfo>& tables() const { return tables_; }

 private:
  std::vector<TableInfo> tables_;
};

}  // namespace tavoline
