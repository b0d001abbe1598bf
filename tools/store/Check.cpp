#include "tools/store/Check.h"

#include "data/store/Location.h"
#include "data/store/sqlite/Engine.h"
#include "data/store/sqlite/Lineage.h"
#include "tools/store/Inspection.h"
#include "tools/store/server/ServerCheck.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
Findings checkStore(const std::string& path) {
  if (const auto address = serverAddress(path)) return checkServer(*address);
  const Location file = locate(path);
  sqlite::requireOwnLog(file);
  sqlite::Connection connection(file.path, file.name, sqlite::Connection::Role::Observer);
  connection.run("BEGIN");  // All that is read is of one moment.
  Findings findings = checkPages(connection);
  if (!findings.empty()) return findings;  // Nothing that such a file says can be relied on.
  append(findings, checkRecord(connection, file));
  const Findings tables = checkTables(connection);
  append(findings, tables);
  append(findings, checkColumns(connection));
  bool counted = true;
  for (const Definition& one : missingDefinitions(connection))
    if (one.kind == Definition::Kind::Key || one.kind == Definition::Kind::Index)
      findings.push_back(tellMissing(one));
    else
      counted = false;
  if (!counted && tables.empty())  // a table takes its triggers with it
    findings.emplace_back(
        "Le compte des écritures manque ou n'est plus celui d'aujourd'hui : les postes liront davantage. "
        "« tavoline-store upgrade » le remet.");
  else if (tables.empty() && !sqlite::hasIdentity(connection))
    findings.emplace_back(
        "La base n'a pas de numéro : un journal resté d'une autre ne se reconnaîtrait pas. « tavoline-store "
        "upgrade » lui en donne un.");
  if (!tables.empty()) return findings;  // The rules about rows name these tables and columns.
  append(findings, checkValues(connection));
  append(findings, checkKeys(sqlite::engine(), askOf(connection)));
  append(findings, checkRows(sqlite::engine(), askOf(connection)));
  return findings;
}

}  // namespace tavoline::tool
