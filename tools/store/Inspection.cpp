#include "tools/store/Inspection.h"

#include <map>
#include <optional>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Text.h"

namespace tavoline::tool {
namespace {

using schema::Column;
using schema::Table;
using sqlite::Connection;
using sqlite::Statement;

constexpr std::size_t kReadVersionAt = 19;  // its place in the file's header
constexpr char kWithLog = 2;

std::string of(const Table& table, std::string_view column) {
  return "La colonne " + std::string(column) + " de " + std::string(table.name);
}

// The text that made a thing of the store; nothing if it is not there.
std::optional<std::string> definition(Connection& connection, std::string_view kind, std::string_view name) {
  Statement row =
      connection.prepare("SELECT sql FROM sqlite_schema WHERE type = ?1 AND name = ?2 COLLATE NOCASE");
  row.bind({kind, name});
  if (!row.step()) return std::nullopt;
  return row.text(0);
}

struct FoundColumn {
  int place = 0;  // the hidden rid stands at 0
  std::string defaultValue;
  int width = 0;
};

std::map<std::string, FoundColumn> columnsOf(Connection& connection, const Table& table) {
  std::map<std::string, FoundColumn> found;  // by folded name
  Statement columns = connection.prepare(
      "SELECT name, cid, dflt_value, CASE WHEN type LIKE 'TEXT(%' THEN CAST(substr(type, 6) AS INTEGER) ELSE "
      "0 END FROM pragma_table_info(?1)");
  columns.bind({table.name});
  while (columns.step())
    found[foldName(columns.text(0))] = {static_cast<int>(columns.integer(1)), columns.text(2),
                                        static_cast<int>(columns.integer(3))};
  return found;
}

std::string rightValue(const Column& column) {
  const std::string name = sqlite::engine().quotedName(column.name);
  const std::string either = '(' + name + " IS NULL OR typeof(" + name + ") ";
  switch (column.type) {
    case FieldType::Text:
      return either + "= 'text' AND tavoline_utf8(" + name + ')' +
             (column.width ? " AND length(" + name + ") <= " + std::to_string(column.width) : "") + ')';
    case FieldType::Integer:
      return either + "= 'integer')";
    case FieldType::Float:
      return either + "IN ('real', 'integer'))";
    case FieldType::Blob:
      return either + "= 'blob')";
    case FieldType::DateTime:
      return either + "= 'text' AND " + name + " LIKE '____-__-__%' AND julianday(" + name + ") IS NOT NULL)";
  }
  return {};
}

}  // namespace

Ask askOf(Connection& connection) {
  return [&connection](const std::string& query) {
    std::vector<std::string> column;
    for (Statement rows = connection.prepare(query); rows.step();)
      column.push_back(rows.isNull(0) ? "(vide)" : rows.text(0));
    return column;
  };
}

Findings checkPages(Connection& connection) {
  Findings findings;
  connection.run("PRAGMA ignore_check_constraints = ON");  // broken widths are told later, with their place
  report(findings, "Fichier abîmé : ",
         askOf(connection)("SELECT * FROM pragma_integrity_check WHERE integrity_check <> 'ok'"));
  return findings;
}

Findings checkRecord(Connection& connection, const Location& file) {
  Findings findings;
  if (connection.integer("PRAGMA application_id") != schema::kApplicationId)
    findings.emplace_back("L'en-tête ne dit pas que c'est une base Tavoline.");
  // Asked of the header: the engine plays no log on a medium that is only read.
  if (file.header.size() <= kReadVersionAt || file.header[kReadVersionAt] != kWithLog)
    findings.emplace_back("Le journal partagé (WAL) n'est pas en place.");
  if (!definition(connection, "table", schema::kRecordTable)) {
    findings.emplace_back("La fiche de la base (tavoline_store) manque.");
    return findings;
  }
  const std::string version = connection.text("SELECT valeur FROM tavoline_store WHERE cle = 'version'");
  const std::string today = std::to_string(schema::kVersion);
  if (version != today)
    findings.push_back("La version de la base est « " + version + " » au lieu de « " + today + " ».");
  if (connection.integer("SELECT count(*) FROM tavoline_store WHERE cle = 'mot_de_passe' AND valeur <> ''") ==
      0)
    findings.emplace_back("La fiche de la base ne porte pas de mot de passe.");
  return findings;
}

Findings checkTables(Connection& connection) {
  Findings findings;
  for (const Table& table : schema::tables()) {
    const auto found = columnsOf(connection, table);
    if (found.empty()) {
      findings.push_back("La table " + std::string(table.name) + " manque.");
      continue;
    }
    if (!found.contains(std::string(schema::kRowNumber)))
      findings.push_back(of(table, schema::kRowNumber) + " manque.");
    for (const Column& column : table.columns)
      if (!found.contains(foldName(column.name))) findings.push_back(of(table, column.name) + " manque.");
  }
  return findings;
}

Findings checkColumns(Connection& connection) {
  Findings findings;
  for (const Table& table : schema::tables()) {
    const auto found = columnsOf(connection, table);
    const std::string text = definition(connection, "table", table.name).value_or("");
    if (found.empty()) continue;
    if (text.find("AUTOINCREMENT") == text.npos)
      findings.push_back("Les numéros de ligne de " + std::string(table.name) + " peuvent être redonnés.");
    int place = 0;
    for (const Column& column : table.columns) {
      ++place;
      const auto entry = found.find(foldName(column.name));
      if (entry == found.end()) continue;
      if (entry->second.place != place) findings.push_back(of(table, column.name) + " n'est pas à sa place.");
      if (entry->second.defaultValue != column.defaultValue)
        findings.push_back(of(table, column.name) + " n'a pas sa valeur par défaut (" +
                           std::string(column.defaultValue) + ").");
      const bool narrower = entry->second.width && entry->second.width < column.width;
      if (column.width && !narrower && text.find(schema::widthConstraint(table, column)) == text.npos)
        findings.push_back(of(table, column.name) + " n'a pas de largeur.");
    }
  }
  std::vector<std::string> narrow;
  for (const NarrowTable& table : narrowTables(connection))
    for (const std::string& column : table.columns) narrow.push_back(table.name + '.' + column);
  report(
      findings,
      "Colonnes plus étroites qu'aujourd'hui, qui refusent des textes longs (« tavoline-store upgrade » les "
      "élargit) : ",
      narrow);
  return findings;
}

Findings checkValues(Connection& connection) {
  Findings findings;
  const Ask ask = askOf(connection);
  for (const Table& table : schema::tables()) {
    std::string all;
    for (const Column& column : table.columns) all += (all.empty() ? "" : " AND ") + rightValue(column);
    const std::string from = " FROM " + sqlite::engine().quotedName(table.name) + " WHERE NOT ";
    std::string anyWrong = "SELECT 1";
    anyWrong.append(from).append("(").append(all).append(") LIMIT 1");
    // One pass for a sound table; only a table with a wrong value is read again, for the place.
    if (ask(anyWrong).empty()) continue;
    for (const Column& column : table.columns)
      report(findings,
             "Valeurs d'un autre genre, trop longues ou illisibles dans " + std::string(table.name) + '.' +
                 std::string(column.name) + ", lignes : ",
             ask("SELECT rid" + from + rightValue(column)));
  }
  return findings;
}

std::vector<NarrowTable> narrowTables(Connection& connection) {
  std::vector<NarrowTable> narrow;
  for (const Table& table : schema::tables()) {
    NarrowTable found{std::string(table.name), {}, definition(connection, "table", table.name).value_or("")};
    const auto columns = columnsOf(connection, table);
    for (const Column& column : table.columns) {
      const auto entry = columns.find(foldName(column.name));
      const int width = entry == columns.end() ? 0 : entry->second.width;
      if (width == 0 || (column.width != 0 && column.width <= width)) continue;
      Column asItStands = column;
      asItStands.width = width;
      const std::string before = columnDefinition(sqlite::engine(), table, asItStands);
      const auto at = found.widened.find(before);
      if (at == std::string::npos) continue;  // not made by this program
      found.widened.replace(at, before.size(), columnDefinition(sqlite::engine(), table, column));
      found.columns.emplace_back(column.name);
    }
    if (!found.columns.empty()) narrow.push_back(std::move(found));
  }
  return narrow;
}

std::string kindOf(const Definition& definition) {
  if (definition.kind == Definition::Kind::Trigger) return "trigger";
  return definition.kind == Definition::Kind::Table ? "table" : "index";
}

std::vector<Definition> missingDefinitions(Connection& connection) {
  std::vector<Definition> missing = auxiliaryDefinitions(sqlite::engine());
  std::erase_if(missing, [&](const Definition& one) {
    return definition(connection, kindOf(one), one.name) == one.text;
  });
  return missing;
}

}  // namespace tavoline::tool
