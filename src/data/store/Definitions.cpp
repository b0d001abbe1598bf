#include "data/store/Definitions.h"

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"

namespace tavoline {
namespace {

using schema::Column;
using schema::Index;
using schema::Table;

std::string literal(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

}  // namespace

std::string columnDefinition(const Engine& engine, const Table& table, const Column& column) {
  const std::string name = engine.quotedName(column.name);
  std::string text = name + ' ' + engine.typeName(column);
  if (!column.defaultValue.empty()) text += " DEFAULT " + std::string(column.defaultValue);
  if (column.type == FieldType::Text && column.width) {
    const std::string width = std::to_string(column.width);
    text += " CONSTRAINT " + engine.quotedName(schema::widthConstraint(table, column)) + " CHECK (length(" +
            name + ") <= " + width + ')';
  }
  return text;
}

namespace {

Definition tableDefinition(const Engine& engine, const Table& table) {
  std::string text = "CREATE TABLE " + engine.quotedName(table.name) + " (\n  " +
                     engine.quotedName(schema::kRowNumber) + ' ' + engine.rowNumberType();
  for (const Column& column : table.columns) text += ",\n  " + columnDefinition(engine, table, column);
  return {Definition::Kind::Table, std::string(table.name), text + "\n)"};
}

Definition indexDefinition(const Engine& engine, const Table& table, const Index& index, bool unique) {
  std::string columns;
  for (const std::string_view column : index.columns)
    columns += (columns.empty() ? "" : ", ") + engine.indexTerm(column);
  std::string text = std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                     engine.quotedName(index.name) + " ON " + engine.quotedName(table.name) + " (" + columns +
                     ')';
  if (!index.only.empty()) text += " WHERE " + std::string(index.only);
  return {unique ? Definition::Kind::Key : Definition::Kind::Index, std::string(index.name), text};
}

}  // namespace

std::vector<Definition> tableDefinitions(const Engine& engine) {
  std::vector<Definition> all;
  for (const Table& table : schema::tables()) all.push_back(tableDefinition(engine, table));
  all.push_back({Definition::Kind::Table, std::string(schema::kRecordTable),
                 "CREATE TABLE " + engine.quotedName(schema::kRecordTable) + " (" +
                     std::string(schema::kRecordKey) + " TEXT PRIMARY KEY, " +
                     std::string(schema::kRecordValue) + " TEXT)"});
  return all;
}

std::vector<Definition> auxiliaryDefinitions(const Engine& engine) {
  std::vector<Definition> all;
  for (const Table& table : schema::tables()) {
    if (!table.key.empty())
      all.push_back(indexDefinition(engine, table, {schema::keyIndex(table), {table.key}}, true));
    for (const Index& index : table.indexes) all.push_back(indexDefinition(engine, table, index, false));
  }
  for (Definition& one : engine.counting()) all.push_back(std::move(one));
  return all;
}

std::vector<std::string> recordStatements(const Engine& engine, std::string_view password) {
  const std::string insert = "INSERT INTO " + engine.quotedName(schema::kRecordTable) + " (" +
                             std::string(schema::kRecordKey) + ", " + std::string(schema::kRecordValue) +
                             ") VALUES (";
  const auto row = [&](std::string_view key, std::string_view value) {
    return insert + literal(key) + ", " + literal(value) + ')';
  };
  return {row(schema::kVersionKey, std::to_string(schema::kVersion)), row(schema::kPasswordKey, password)};
}

}  // namespace tavoline
