#include "tools/store/server/ServerCheck.h"

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/postgres/CatalogReader.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/Opening.h"
#include "tools/store/server/ServerCreation.h"
#include "tools/store/server/ServerDefinitions.h"

namespace tavoline::tool {

namespace {

Findings checkRecord(postgres::Connection& connection) {
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

Findings checkBeside(postgres::Connection& connection) {
  Findings findings;
  bool counted = true;
  for (const Definition& one : missingDefinitions(connection)) {
    if (one.kind == Definition::Kind::Key || one.kind == Definition::Kind::Index)
      findings.push_back(tellMissing(one));
    else if (one.name == "tavoline_plie")
      findings.emplace_back(
          "La fonction tavoline_plie manque ou n'est plus celle d'aujourd'hui : les recherches par le début "
          "d'un nom échouent. « tavoline-store upgrade » la remet.");
    else
      counted = false;
  }
  if (!counted)
    findings.emplace_back(
        "Le compte des écritures, ou ce qui numérote les lignes, manque ou n'est plus celui d'aujourd'hui : "
        "un poste peut ne pas voir ce qu'un autre écrit. « tavoline-store upgrade » le remet.");
  return findings;
}

}  // namespace

Findings checkServer(const postgres::Address& address) {
  const auto connection = reachServer(address);
  connection->execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
  Findings findings = checkRecord(*connection);
  const Catalog catalog = postgres::readCatalog(*connection);
  const Findings tables = checkTables(catalog);
  append(findings, tables);
  append(findings, checkColumns(catalog));
  if (!tables.empty()) return findings;  // What stands beside them, and the rules about rows, name them.
  append(findings, checkBeside(*connection));
  append(findings, checkKeys(postgres::engine(), askOf(*connection)));
  append(findings, checkRows(postgres::engine(), askOf(*connection)));
  return findings;
}

}  // namespace tavoline::tool
