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

namespace tavoline::tool {
namespace {

using sqlite::Connection;

// What an addition cannot mend, or would fail on.
void requireUpgradable(Connection& connection) {
  requireKnownVersion(connection.name(), sqlite::recordOf(connection));
  Findings findings = checkPages(connection);
  if (findings.empty()) findings = checkTables(connection);
  if (findings.empty()) findings = checkKeys(sqlite::engine(), askOf(connection));
  if (findings.empty()) return;
  std::string sentence = "« " + connection.name() +
                         " » ne peut pas être mise à jour, et n'a pas été touchée. Corrigez d'abord ceci, ou "
                         "remettez la dernière sauvegarde :";
  for (const std::string& finding : findings) sentence += "\n  - " + finding;
  throw StoreError(sentence);
}

void add(Connection& connection, const std::vector<Definition>& missing) {
  for (const Definition& one : missing) {
    connection.execute("DROP " + kindOf(one) + " IF EXISTS " + sqlite::engine().quotedName(one.name));
    connection.execute(one.text);
  }
}

}  // namespace

Upgrade upgradeStore(const std::string& path) {
  const Location file = locate(path);
  sqlite::requireOwn(file);
  sqlite::requireWritable(file);
  sqlite::requireOwnLog(file);
  Upgrade done;
  {
    Connection looking(file.path, file.name, Connection::Role::Observer);
    looking.run("BEGIN");  // All that is read is of one moment.
    requireUpgradable(looking);
    if (missingDefinitions(looking).empty() && sqlite::hasIdentity(looking)) return done;
  }
  done.backup =
      besideAt(Clock::now(), file.path, "avant", std::filesystem::path(file.path).extension().string());
  backupStore(path, done.backup);

  Connection connection(file.path, file.name, Connection::Role::Writer);
  connection.run("PRAGMA synchronous = FULL");
  connection.run("BEGIN IMMEDIATE");
  try {
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
