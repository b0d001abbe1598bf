#include "data/schema/Schema.h"

namespace tavoline::schema {
namespace {

class SqliteEngine : public Engine {
 public:
  std::string quoted(std::string_view name) const override { return '"' + std::string(name) + '"'; }

  std::string rowNumberType() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }

  std::string typeName(const Column& column) const override {
    switch (column.type) {
      case FieldType::Text:
        return column.width ? "TEXT(" + std::to_string(column.width) + ")" : "TEXT";
      case FieldType::Integer:
        return "INTEGER";
      case FieldType::Float:
        return "REAL";
      case FieldType::DateTime:
        return "DATETIME";
      case FieldType::Blob:
        return "BLOB";
    }
    return {};
  }
};

std::string columnDefinition(const Engine& engine, const Table& table, const Column& column) {
  const std::string name = engine.quoted(column.name);
  std::string sql = name + ' ' + engine.typeName(column);
  if (!column.defaultValue.empty()) sql += " DEFAULT " + std::string(column.defaultValue);
  if (column.type == FieldType::Text && column.width) {
    const std::string width = std::to_string(column.width);
    sql += " CONSTRAINT " + engine.quoted(widthConstraint(table, column)) + " CHECK (length(" + name +
           ") <= " + width + ')';
  }
  return sql;
}

std::string tableDefinition(const Engine& engine, const Table& table) {
  std::string sql = "CREATE TABLE " + engine.quoted(table.name) + " (\n  " + engine.quoted("rid") + ' ' +
                    engine.rowNumberType();
  for (const Column& column : table.columns) sql += ",\n  " + columnDefinition(engine, table, column);
  return sql + "\n)";
}

std::string indexDefinition(const Engine& engine, const Table& table, const Index& index, bool unique) {
  std::string columns;
  for (std::string_view column : index.columns)
    columns += (columns.empty() ? "" : ", ") + engine.quoted(column);
  std::string sql = std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                    engine.quoted(index.name) + " ON " + engine.quoted(table.name) + " (" + columns + ')';
  if (!index.only.empty()) sql += " WHERE " + std::string(index.only);
  return sql;
}

std::string literal(std::string_view text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

}  // namespace

std::string widthConstraint(const Table& table, const Column& column) {
  return "largeur_" + std::string(table.name) + '_' + std::string(column.name) + '_' +
         std::to_string(column.width);
}

const Engine& sqliteEngine() {
  static const SqliteEngine engine;
  return engine;
}

std::vector<std::string> tableDefinitions(const Engine& engine) {
  std::vector<std::string> statements;
  for (const Table& table : tables()) statements.push_back(tableDefinition(engine, table));
  statements.push_back("CREATE TABLE " + engine.quoted("tavoline_store") +
                       " (cle TEXT PRIMARY KEY, valeur TEXT)");
  return statements;
}

std::vector<std::string> indexDefinitions(const Engine& engine) {
  std::vector<std::string> statements;
  for (const Table& table : tables()) {
    const std::string keyName = "cle_" + std::string(table.name);
    if (!table.key.empty())
      statements.push_back(indexDefinition(engine, table, {keyName, {table.key}}, true));
    for (const Index& index : table.indexes)
      statements.push_back(indexDefinition(engine, table, index, false));
  }
  return statements;
}

std::vector<std::string> recordStatements(std::string_view password) {
  const std::string insert = "INSERT INTO tavoline_store (cle, valeur) VALUES ";
  return {insert + "('version', " + literal(kVersion) + ')',
          insert + "('mot_de_passe', " + literal(password) + ')'};
}

std::vector<std::string> sqliteDefinitions(std::string_view password) {
  std::vector<std::string> statements = {"PRAGMA application_id = " + std::to_string(kApplicationId),
                                         "PRAGMA encoding = 'UTF-8'", "PRAGMA journal_mode = WAL"};
  for (const auto& part :
       {tableDefinitions(sqliteEngine()), indexDefinitions(sqliteEngine()), recordStatements(password)})
    statements.insert(statements.end(), part.begin(), part.end());
  return statements;
}

}  // namespace tavoline::schema
