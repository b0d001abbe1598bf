#include "tools/store/server/ServerCheck.h"

#include <iterator>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/Definitions.h"
#include "data/store/postgres/CatalogReader.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/Opening.h"
#include "data/value/Text.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {

namespace {

using postgres::Answer;
using postgres::Connection;
using postgres::Question;

Ask askOf(Connection& connection) {
  return [&connection](const std::string& query) {
    std::vector<std::string> column;
    const Answer rows = connection.ask(Question{query});
    column.reserve(static_cast<std::size_t>(rows.rows()));
    for (int row = 0; row < rows.rows(); ++row)
      column.push_back(rows.isNull(row, 0) ? "(vide)" : rows.value(row, 0, FieldType::Text).text());
    return column;
  };
}

Findings checkRecord(Connection& connection) {
  Findings findings;
  const StoreRecord record = postgres::recordOf(connection);
  const std::string version = record(schema::kVersionKey).value_or("");
  const std::string today = std::to_string(schema::kVersion);
  if (version != today)
    findings.push_back("La version de la base est « " + version + " » au lieu de « " + today + " ».");
  if (record(schema::kPasswordKey).value_or("").empty())
    findings.emplace_back("La fiche de la base ne porte pas de mot de passe.");
  return findings;
}

std::string of(const schema::Table& table, const schema::Column& column) {
  return "La colonne " + std::string(column.name) + " de " + std::string(table.name);
}

// `whole` says whether the rules of the rows can name these tables and columns.
Findings checkTables(const Catalog& catalog, bool& whole) {
  Findings findings;
  for (const schema::Table& table : schema::tables()) {
    const TableInfo* const found = catalog.find(table.name);
    if (!found) findings.push_back("La table " + std::string(table.name) + " manque.");
    whole = whole && found;
    for (std::size_t i = 0; found && i < table.columns.size(); ++i) {
      const schema::Column& column = table.columns[i];
      const ColumnInfo* const info = found->find(column.name);
      if (!info) {
        findings.push_back(of(table, column) + " manque.");
        whole = false;
        continue;
      }
      if (!sameName(found->columns[i].name, column.name))
        findings.push_back(of(table, column) + " n'est pas à sa place.");
      if (info->type != column.type) findings.push_back(of(table, column) + " est d'un autre genre.");
      if (info->width != column.width)
        findings.push_back(
            of(table, column) +
            " n'a pas sa largeur. Une copie par « tavoline-store copy » vers une base neuve l'a.");
      if (info->defaultValue.isNull() != column.defaultValue.empty())
        findings.push_back(of(table, column) + " n'a pas sa valeur par défaut.");
    }
  }
  return findings;
}

// Asks for the definition by its name.
std::string questionFor(Definition::Kind kind) {
  switch (kind) {
    case Definition::Kind::Trigger:
      return "SELECT 1 FROM pg_trigger WHERE tgname = $1 AND tgenabled <> 'D'";
    case Definition::Kind::Function:
      return "SELECT 1 FROM pg_proc WHERE proname = $1 AND pronamespace = 'public'::regnamespace";
    case Definition::Kind::Key:
      return "SELECT 1 FROM pg_index i JOIN pg_class c ON c.oid = i.indexrelid WHERE c.relname = $1 AND "
             "i.indisvalid AND i.indisunique";
    default:
      return "SELECT 1 FROM pg_class WHERE relname = $1";
  }
}

bool standsThere(Connection& connection, const Definition& one) {
  return connection.ask(Question{questionFor(one.kind), {std::string(one.name)}}).rows() > 0;
}

Findings checkBeside(Connection& connection) {
  Findings findings;
  bool counted = true;
  std::vector<Definition> wanted = postgres::functionDefinitions();
  for (Definition& one : auxiliaryDefinitions(postgres::engine())) wanted.push_back(std::move(one));
  for (const Definition& one : wanted) {
    if (standsThere(connection, one)) continue;
    if (one.kind == Definition::Kind::Key)
      findings.push_back("La clé " + one.name + " manque : rien n'empêche les doubles.");
    else if (one.kind == Definition::Kind::Index)
      findings.push_back("L'index " + one.name + " manque : la base sera lente.");
    else if (one.name == "tavoline_plie")
      findings.emplace_back(
          "La fonction tavoline_plie manque : les recherches par le début d'un nom échouent.");
    else
      counted = false;
  }
  if (!counted)
    findings.emplace_back(
        "Le compte des écritures, ou ce qui numérote les lignes, manque : un poste peut ne pas voir ce qu'un "
        "autre écrit. Copiez la base dans une base neuve par « tavoline-store copy ».");
  return findings;
}

void append(Findings& findings, Findings more) {
  std::move(more.begin(), more.end(), std::back_inserter(findings));
}

}  // namespace

Findings checkServer(const postgres::Address& address) {
  const auto connection = reachServer(address);
  connection->execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
  Findings findings = checkRecord(*connection);
  bool whole = true;
  append(findings, checkTables(postgres::readCatalog(*connection), whole));
  append(findings, checkBeside(*connection));
  if (!whole) return findings;
  append(findings, checkKeys(postgres::engine(), askOf(*connection)));
  append(findings, checkRows(postgres::engine(), askOf(*connection)));
  return findings;
}

}  // namespace tavoline::tool
