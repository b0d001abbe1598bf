#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::schema {

/// A column as declared. Its place in Table::columns counts: two screens read columns by position.
struct Column {
  std::string_view name;
  FieldType type = FieldType::Text;
  int width = 0;                       ///< Characters of a text; 0 for no limit.
  std::string_view defaultValue = {};  ///< As an SQL literal; empty for none.
};

struct Index {
  std::string name;
  std::vector<std::string_view> columns;
  std::string_view only =
      {};  ///< Condition, in SQL, of the rows that the index holds; empty for all of them.
};

struct Table {
  std::string_view name;
  std::string_view key;  ///< The column without duplicates; empty where none is kept so.
  std::vector<Column> columns;
  std::vector<Index> indexes;

  const Column* find(std::string_view column) const;  ///< By exact name; null if absent.
};

/// The seventeen tables of a store. This is the only place where they are written down: the definitions for
/// each engine, the checks of a store and what an upgrade adds are all made from it.
const std::vector<Table>& tables();
const Table& table(std::string_view name);  ///< Throws std::out_of_range.

/// Name of the constraint that holds a text to its width: `largeur_TABLE_COLUMN_WIDTH`.
std::string widthConstraint(const Table& table, const Column& column);
/// Name of the index that keeps a table's key without duplicates: `cle_TABLE`.
std::string keyIndex(const Table& table);

}  // namespace tavoline::schema
