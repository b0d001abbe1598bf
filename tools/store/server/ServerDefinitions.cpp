#include "tools/store/server/ServerDefinitions.h"

#include <set>

#include "data/schema/Schema.h"
#include "data/store/postgres/Engine.h"
#include "data/value/Text.h"

namespace tavoline::tool {

namespace {

using postgres::Answer;
using postgres::Question;

std::string of(const schema::Table& table, const schema::Column& column) {
  return "La colonne " + std::string(column.name) + " de " + std::string(table.name);
}

// Held to less than today, as a version before this one made it.
bool isNarrow(const ColumnInfo& there, const schema::Column& column) {
  return there.width != 0 && (column.width == 0 || there.width < column.width);
}

// Without what the engine adds to a definition, or leaves out of it, when it gives it back.
std::string plain(std::string_view name, std::string_view text) {
  std::string result = foldName(text);
  for (const std::string_view added : {" using btree", "public.", "::text"})
    for (auto at = result.find(added); at != result.npos; at = result.find(added))
      result.erase(at, added.size());
  std::erase_if(result, [](char c) { return c == '"' || c == '(' || c == ')' || c == ' ' || c == '\n'; });
  return std::string(name) + '\n' + result;
}

// The engine keeps of a function what stands between its quotes, and tells of a table in its own way.
std::string plain(const Definition& one) {
  if (one.kind == Definition::Kind::Table) return plain(one.name, "");
  if (one.kind != Definition::Kind::Function) return plain(one.name, one.text);
  const auto begin = one.text.find("$$") + 2;
  return plain(one.name, std::string_view(one.text).substr(begin, one.text.rfind("$$") - begin));
}

constexpr const char* standing =
    "SELECT c.relname::text, pg_get_indexdef(i.indexrelid) FROM pg_index i JOIN pg_class c ON c.oid = "
    "i.indexrelid WHERE c.relnamespace = 'public'::regnamespace AND i.indisvalid UNION ALL "
    "SELECT t.tgname::text, pg_get_triggerdef(t.oid) FROM pg_trigger t JOIN pg_class c ON c.oid = t.tgrelid "
    "WHERE c.relnamespace = 'public'::regnamespace AND NOT t.tgisinternal AND t.tgenabled = 'O' UNION ALL "
    "SELECT proname::text, prosrc FROM pg_proc WHERE pronamespace = 'public'::regnamespace UNION ALL "
    "SELECT relname::text, '' FROM pg_class WHERE relnamespace = 'public'::regnamespace AND relkind = 'r'";

}  // namespace

Ask askOf(postgres::Connection& connection) {
  return [&connection](const std::string& query) {
    std::vector<std::string> column;
    const Answer rows = connection.ask(Question{query});
    column.reserve(static_cast<std::size_t>(rows.rows()));
    for (int row = 0; row < rows.rows(); ++row)
      column.push_back(rows.isNull(row, 0) ? "(vide)" : rows.value(row, 0, FieldType::Text).text());
    return column;
  };
}

Findings checkTables(const Catalog& found) {
  Findings findings;
  for (const schema::Table& table : schema::tables()) {
    const TableInfo* const info = found.find(table.name);
    if (!info) findings.push_back("La table " + std::string(table.name) + " manque.");
    if (!info) continue;
    for (const schema::Column& column : table.columns)
      if (!info->find(column.name)) findings.push_back(of(table, column) + " manque.");
  }
  return findings;
}

Findings checkColumns(const Catalog& found) {
  Findings findings;
  for (const schema::Table& table : schema::tables()) {
    const TableInfo* const info = found.find(table.name);
    for (std::size_t i = 0; info && i < table.columns.size(); ++i) {
      const schema::Column& column = table.columns[i];
      const ColumnInfo* const there = info->find(column.name);
      if (!there) continue;
      if (!sameName(info->columns[i].name, column.name))
        findings.push_back(of(table, column) + " n'est pas à sa place.");
      if (there->type != column.type) findings.push_back(of(table, column) + " est d'un autre genre.");
      if (isNarrow(*there, column))
        findings.push_back(of(table, column) +
                           " est plus étroite qu'aujourd'hui et refuse des textes longs. « tavoline-store "
                           "upgrade » l'élargit.");
      else if (there->width != column.width)
        findings.push_back(
            of(table, column) +
            " n'a pas sa largeur. Une copie par « tavoline-store copy » vers une base neuve l'a.");
      if (there->defaultValue.isNull() != column.defaultValue.empty())
        findings.push_back(of(table, column) + " n'a pas sa valeur par défaut.");
    }
  }
  return findings;
}

std::vector<NarrowColumn> narrowColumns(const Catalog& found) {
  std::vector<NarrowColumn> narrow;
  for (const schema::Table& table : schema::tables()) {
    const TableInfo* const info = found.find(table.name);
    for (const schema::Column& column : table.columns) {
      const ColumnInfo* const there = info ? info->find(column.name) : nullptr;
      if (there && isNarrow(*there, column)) narrow.push_back({table, column, there->width});
    }
  }
  return narrow;
}

void widen(postgres::Connection& connection, const NarrowColumn& narrow) {
  const auto name = [](std::string_view text) { return postgres::engine().quotedName(text); };
  const std::string change = "ALTER TABLE " + name(narrow.table.name);
  schema::Column asItStands = narrow.column;
  asItStands.width = narrow.width;
  connection.execute(change + " DROP CONSTRAINT " + name(schema::widthConstraint(narrow.table, asItStands)));
  if (narrow.column.width == 0) return;
  connection.execute(change + " ADD CONSTRAINT " +
                     name(schema::widthConstraint(narrow.table, narrow.column)) + " CHECK (length(" +
                     name(narrow.column.name) + ") <= " + std::to_string(narrow.column.width) + ")");
}

std::vector<Definition> missingDefinitions(postgres::Connection& connection) {
  std::set<std::string> there;
  const Answer rows = connection.ask(Question{standing});
  for (int row = 0; row < rows.rows(); ++row) there.insert(plain(rows.text(row, 0), rows.text(row, 1)));
  std::vector<Definition> missing = postgres::functionDefinitions();
  for (Definition& one : auxiliaryDefinitions(postgres::engine())) missing.push_back(std::move(one));
  std::erase_if(missing, [&](const Definition& one) { return there.contains(plain(one)); });
  return missing;
}

void renew(postgres::Connection& connection, const Definition& one) {
  constexpr std::string_view create = "CREATE";
  switch (one.kind) {
    case Definition::Kind::Trigger: {
      const Answer former =
          connection.ask(Question{"SELECT format('DROP TRIGGER %I ON %s', tgname, tgrelid::regclass) FROM "
                                  "pg_trigger WHERE tgname = $1",
                                  {one.name}});
      for (int row = 0; row < former.rows(); ++row) connection.execute(former.text(row, 0));
      return connection.execute(one.text);
    }
    case Definition::Kind::Function:  // whose triggers would go with it
      return connection.execute("CREATE OR REPLACE" + one.text.substr(create.size()));
    case Definition::Kind::Key:
    case Definition::Kind::Index:
      connection.execute("DROP INDEX IF EXISTS " + postgres::engine().quotedName(one.name));
      return connection.execute(one.text);
    case Definition::Kind::Table:
      return connection.execute(one.text);
  }
}

}  // namespace tavoline::tool
