#include "data/store/sqlite/CatalogReader.h"

#include <charconv>

#include "data/schema/Identity.h"
#include "data/store/Defaults.h"
#include "data/value/Text.h"

namespace tavoline::sqlite {

namespace {

struct Declared {
  FieldType type = FieldType::Text;
  int width = 0;
};

// "TEXT(120)", "REAL", ...: the word before the parenthesis, and the number in it.
Declared declared(const std::string& text) {
  const auto open = text.find('(');
  const std::string word = foldName(text.substr(0, open));
  Declared result;
  if (word == foldName("INTEGER")) result.type = FieldType::Integer;
  if (word == foldName("REAL")) result.type = FieldType::Float;
  if (word == foldName("DATETIME") || word == foldName("DATE")) result.type = FieldType::DateTime;
  if (word == foldName("BLOB")) result.type = FieldType::Blob;
  if (open != text.npos) std::from_chars(text.data() + open + 1, text.data() + text.size(), result.width);
  return result;
}

}  // namespace

Catalog readCatalog(Connection& connection) {
  Statement columns = connection.prepare(
      "SELECT m.name, c.name, c.type, c.dflt_value FROM sqlite_schema AS m, pragma_table_info(m.name) AS c "
      "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite^_%' ESCAPE '^' AND m.name NOT IN (?1, ?2) AND "
      "c.name <> ?3 ORDER BY m.rowid, c.cid");
  columns.bind(
      {std::string(schema::kRecordTable), std::string(schema::kCountTable), std::string(schema::kRowNumber)});
  std::vector<TableInfo> tables;
  while (columns.step()) {
    const std::string table = columns.text(0);
    if (tables.empty() || tables.back().name != table) tables.push_back({table, {}});
    const auto [type, width] = declared(columns.text(2));
    tables.back().columns.push_back({columns.text(1), type, width, constantDefault(columns.text(3), type)});
  }
  return Catalog(std::move(tables));
}

bool keepsCounts(Connection& connection, const Catalog& catalog) {
  // A trigger for each table and way of writing; a copy made by another tool may have lost them.
  Statement triggers = connection.prepare(
      "SELECT count(*) FROM sqlite_schema WHERE type = 'trigger' AND name LIKE 'ecriture^_%' ESCAPE '^' AND "
      "EXISTS (SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1)");
  triggers.bind({std::string(schema::kCountTable)});
  triggers.step();
  return triggers.integer(0) == static_cast<std::int64_t>(3 * catalog.tables().size());
}

WriteCounts readCounts(Connection& connection) {
  WriteCounts counts;
  Statement rows = connection.prepare("SELECT nom, nombre FROM tavoline_ecritures");
  while (rows.step()) counts[foldName(rows.text(0))] = rows.integer(1);
  return counts;
}

}  // namespace tavoline::sqlite
