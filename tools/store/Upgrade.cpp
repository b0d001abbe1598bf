#include "tools/store/Upgrade.h"

#include <filesystem>

#include "data/store/sqlite/Engine.h"
#include "data/store/sqlite/Lineage.h"
#include "data/store/sqlite/Opening.h"
#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "tools/store/Backup.h"
#include "tools/store/Inspection.h"
#include "tools/store/Publishing.h"
#include "tools/store/server/ServerCreation.h"
#include "tools/store/server/ServerUpgrade.h"

namespace tavoline::tool {
namespace {

using sqlite::Connection;

// What an addition cannot mend, or would fail on.
void requireUpgradable(Connection& connection) {
  requireKnownVersion(connection.name(), sqlite::recordOf(connection));
  Findings findings = checkPages(connection);
  if (findings.empty()) findings = checkTables(connection);
  if (findings.empty()) findings = checkKeys(sqlite::engine(), askOf(connection));
  requireNone(findings, "« " + connection.name() + " »");
}

void add(Connection& connection, const std::vector<Definition>& missing) {
  for (const Definition& one : missing) {
    connection.execute("DROP " + kindOf(one) + " IF EXISTS " + sqlite::engine().quotedName(one.name));
    connection.execute(one.text);
  }
}

// To take a limit from a text changes nothing of what is stored, so that the engine allows the definition to
// be replaced by itself. It and whoever has the store open read it anew.
void widen(Connection& connection, const std::vector<NarrowTable>& tables) {
  if (tables.empty()) return;
  connection.run("PRAGMA writable_schema = ON");
  for (const NarrowTable& table : tables) {
    sqlite::Statement change = connection.prepare(
        "UPDATE sqlite_schema SET sql = ?1 WHERE type = 'table' AND name = ?2 COLLATE NOCASE");
    change.bind({table.widened, table.name});
    change.step();
  }
  const std::int64_t version = connection.integer("PRAGMA schema_version");
  connection.run("PRAGMA schema_version = " + std::to_string(version + 1));
  connection.run("PRAGMA writable_schema = OFF");
}

}  // namespace

void requireNone(const Findings& findings, const std::string& store) {
  if (findings.empty()) return;
  std::string sentence = store +
                         " ne peut pas être mise à jour, et n'a pas été touchée. Corrigez d'abord ceci, ou "
                         "remettez la dernière sauvegarde :";
  for (const std::string& finding : findings) sentence += "\n  - " + finding;
  throw StoreError(sentence);
}

Upgrade upgradeStore(const std::string& path) {
  if (const auto address = serverAddress(path)) return upgradeServer(*address);
  const Location file = locate(path);
  sqlite::requireOwn(file);
  sqlite::requireWritable(file);
  sqlite::requireOwnLog(file);
  Upgrade done;
  {
    Connection looking(file.path, file.name, Connection::Role::Observer);
    looking.run("BEGIN");  // All that is read is of one moment.
    requireUpgradable(looking);
    if (missingDefinitions(looking).empty() && narrowTables(looking).empty() && sqlite::hasIdentity(looking))
      return done;
  }
  done.backup =
      besideAt(Clock::now(), file.path, "avant", std::filesystem::path(file.path).extension().string());
  backupStore(path, done.backup);

  Connection connection(file.path, file.name, Connection::Role::Writer);
  connection.run("PRAGMA synchronous = FULL");
  connection.run("BEGIN IMMEDIATE");
  try {
    const std::vector<NarrowTable> narrow = narrowTables(connection);
    widen(connection, narrow);
    for (const NarrowTable& table : narrow)
      for (const std::string& column : table.columns)
        done.added.push_back("largeur de " + table.name + '.' + column);
    const std::vector<Definition> missing = missingDefinitions(connection);
    add(connection, missing);
    for (const Definition& one : missing) done.added.push_back(one.name);
    if (!sqlite::hasIdentity(connection)) {
      sqlite::giveIdentity(connection);
      done.added.emplace_back("numéro de la base");
    }
    connection.run("COMMIT");
  } catch (const std::exception&) {
    connection.rollback();
    throw;
  }
  return done;
}

}  // namespace tavoline::tool
