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
  std::string_view name;
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
/// each engine, the checks of a store and the tool's own insertions are all made from it.
const std::vector<Table>& tables();
const Table& table(std::string_view name);  ///< Throws std::out_of_range.

/// Name of the constraint that holds a text to its width: `largeur_TABLE_COLUMN_WIDTH`.
std::string widthConstraint(const Table& table, const Column& column);

/// The password that a store records when nothing else is asked; workstations present it in their connection
/// string.
inline constexpr std::string_view kStorePassword = "rainandshine20042011";

/// "Store of this system" in the header of an SQLite file ("TAVO").
inline constexpr int kApplicationId = 0x5441564F;
inline constexpr std::string_view kVersion = "1";

/// What differs from one engine to the next in the definition of the tables.
class Engine {
 public:
  virtual ~Engine() = default;
  virtual std::string quoted(std::string_view name) const = 0;
  /// Type of the hidden column `rid`: given by the engine, in order of insertion, never given twice.
  virtual std::string rowNumberType() const = 0;
  virtual std::string typeName(const Column& column) const = 0;
};

const Engine& sqliteEngine();

/// `create table`, one per table: `rid` first, then the declared columns with their defaults and, for the
/// texts, their widths as constraints named `largeur_TABLE_COLUMN_WIDTH`. Last comes `tavoline_store`, the
/// store's record of itself.
std::vector<std::string> tableDefinitions(const Engine& engine);
/// `create index`: the keys (`cle_TABLE`, unique; rows without a key are allowed), then the others.
std::vector<std::string> indexDefinitions(const Engine& engine);
/// The rows of `tavoline_store`: version and password.
std::vector<std::string> recordStatements(std::string_view password);

/// All that makes an empty SQLite file a store without rows, in order.
std::vector<std::string> sqliteDefinitions(std::string_view password = kStorePassword);

}  // namespace tavoline::schema
