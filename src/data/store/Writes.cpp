#include "data/store/Writes.h"

#include "data/schema/Identity.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

const ColumnInfo& columnNamed(const TableInfo& table, const std::string& name) {
  const ColumnInfo* const column = table.find(name);
  if (!column)
    throw StoreError("La table « " + table.name + " » n'a pas de colonne « " + name +
                     " ». Le fichier de données ne convient pas à ce programme.");
  return *column;
}

// `where` the row number is the last of `values`.
std::string ofRow(std::vector<Value>& values, RowId row, const sql::Dialect& dialect) {
  values.emplace_back(row);
  return " WHERE " + dialect.quotedName(schema::kRowNumber) + " = " + dialect.placeholder(values.size());
}

}  // namespace

const TableInfo& tableNamed(const Catalog& catalog, std::string_view name) {
  const TableInfo* const table = catalog.find(name);
  if (!table)
    throw StoreError("La table « " + std::string(name) +
                     " » manque dans les données. Remettez la dernière sauvegarde, ou examinez le fichier "
                     "par « tavoline-store check ».");
  return *table;
}

std::string insertionText(std::string_view table, const std::vector<std::string_view>& columns,
                          const sql::Dialect& dialect) {
  const std::string into = "INSERT INTO " + dialect.quotedName(table);
  if (columns.empty()) return into + " DEFAULT VALUES";
  std::string names, marks;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    names += (i ? ", " : "") + dialect.quotedName(columns[i]);
    marks += (i ? ", " : "") + dialect.placeholder(i + 1);
  }
  return into + " (" + names + ") VALUES (" + marks + ')';
}

sql::Written insertion(const TableInfo& table, const FieldValues& fields, const sql::Dialect& dialect) {
  std::vector<std::string_view> columns;
  std::vector<Value> values;
  columns.reserve(fields.size());
  values.reserve(fields.size());
  for (const auto& [name, value] : fields) {
    const ColumnInfo& column = columnNamed(table, name);
    columns.push_back(column.name);
    values.push_back(value.as(column.type));
  }
  return {insertionText(table.name, columns, dialect), std::move(values)};
}

sql::Written change(const TableInfo& table, RowId row, const FieldValues& fields,
                    const sql::Dialect& dialect) {
  const std::string rid = dialect.quotedName(schema::kRowNumber);
  std::string assignments = fields.empty() ? rid + " = " + rid : "";
  std::vector<Value> values;
  values.reserve(fields.size() + 1);
  for (const auto& [name, value] : fields) {
    const ColumnInfo& column = columnNamed(table, name);
    values.push_back(value.as(column.type));
    assignments += (values.size() > 1 ? ", " : "") + dialect.quotedName(column.name) + " = " +
                   dialect.placeholder(values.size());
  }
  const std::string where = ofRow(values, row, dialect);
  return {"UPDATE " + dialect.quotedName(table.name) + " SET " + assignments + where, std::move(values)};
}

sql::Written removal(const TableInfo& table, RowId row, const sql::Dialect& dialect) {
  std::vector<Value> values;
  const std::string where = ofRow(values, row, dialect);
  return {"DELETE FROM " + dialect.quotedName(table.name) + where, std::move(values)};
}

void refuseChangeOfGone(const TableInfo& table) {
  throw StoreError(
      "La ligne de la table « " + table.name +
      " » a été supprimée par un autre poste : elle ne peut plus être modifiée. Actualisez, puis "
      "recommencez.");
}

void refuseRemovalOfGone(const TableInfo& table) {
  throw StoreError("La ligne de la table « " + table.name +
                   " » a été supprimée par un autre poste : il ne reste rien à supprimer. Actualisez.");
}

}  // namespace tavoline
