#include "tools/store/server/ServerUpgrade.h"

#include <algorithm>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/postgres/CatalogReader.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/Opening.h"
#include "data/value/Clock.h"
#include "tools/store/Publishing.h"
#include "tools/store/server/ServerBackup.h"
#include "tools/store/server/ServerCreation.h"
#include "tools/store/server/ServerDefinitions.h"

namespace tavoline::tool {

namespace {

using postgres::Answer;
using postgres::Question;

// What an addition cannot mend, or would fail on.
void requireUpgradable(postgres::Connection& connection) {
  requireKnownVersion(connection.address().name, postgres::recordOf(connection));
  Findings findings = checkTables(postgres::readCatalog(connection));
  if (findings.empty()) findings = checkKeys(postgres::engine(), askOf(connection));
  requireNone(findings, "La base « " + connection.address().database + " »");
}

// Everything belongs to whom the store's record belongs to.
void becomeOwner(postgres::Connection& connection) {
  const Answer owner = connection.ask(Question{
      "SELECT format('SET LOCAL ROLE %I', pg_get_userbyid(relowner)) FROM pg_class WHERE oid = $1::regclass",
      {std::string(schema::kRecordTable)}});
  connection.execute(owner.text(0, 0));
}

bool counts(const Definition& one) {
  return one.kind == Definition::Kind::Table || one.kind == Definition::Kind::Trigger;
}

// What was written while nothing counted is unknown: every workstation shall read every table anew.
void passCountsOn(postgres::Connection& connection) {
  const std::string counts = postgres::engine().quotedName(schema::kCountTable);
  for (const schema::Table& table : schema::tables())
    connection.ask(Question{"INSERT INTO " + counts +
                                " AS e (nom, nombre) VALUES ($1, 1) ON CONFLICT (nom) DO "
                                "UPDATE SET nombre = e.nombre + 1",
                            {std::string(table.name)}});
}

}  // namespace

Upgrade upgradeServer(const postgres::Address& address) {
  const auto connection = reachServer(address);
  requireUpgradable(*connection);
  Upgrade done;
  if (missingDefinitions(*connection).empty() && narrowColumns(postgres::readCatalog(*connection)).empty())
    return done;
  done.backup = besideAt(Clock::now(), address.database, "avant", ".dump");
  backupServer(address, done.backup);

  connection->execute("BEGIN");
  becomeOwner(*connection);
  for (const NarrowColumn& narrow : narrowColumns(postgres::readCatalog(*connection))) {
    widen(*connection, narrow);
    done.added.push_back("largeur de " + std::string(narrow.table.name) + '.' +
                         std::string(narrow.column.name));
  }
  const std::vector<Definition> missing = missingDefinitions(*connection);
  for (const Definition& one : missing) {
    renew(*connection, one);
    done.added.push_back(one.name);
  }
  if (std::ranges::any_of(missing, counts)) {
    passCountsOn(*connection);
    grantRows(*connection);
  }
  connection->execute("COMMIT");
  return done;
}

}  // namespace tavoline::tool
