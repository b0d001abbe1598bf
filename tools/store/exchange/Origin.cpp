#include "tools/store/exchange/Origin.h"

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/Location.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/Opening.h"
#include "data/store/sqlite/Opening.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

Origin openServerOrigin(const postgres::Address& address) {
  const auto connection = reachServer(address);
  Origin origin;
  origin.password = postgres::recordOf(*connection)(schema::kPasswordKey).value_or("");
  origin.store = postgres::openServer(address, origin.password);
  for (const schema::Table& table : schema::tables()) {
    const std::string name = postgres::engine().quotedName(table.name);
    const postgres::Answer last = connection->ask(postgres::Question{
        "SELECT pg_sequence_last_value(pg_get_serial_sequence($1, 'rid')::regclass)", {name}});
    if (!last.isNull(0, 0)) origin.given[std::string(table.name)] = last.integer(0, 0);
  }
  return origin;
}

Origin openFileOrigin(const std::string& path) {
  const Location file = locate(path);
  sqlite::requireOwn(file);
  Origin origin;
  {
    sqlite::Connection connection(file.path, file.name, sqlite::Connection::Role::Observer);
    origin.password = sqlite::recordOf(connection)(schema::kPasswordKey).value_or("");
    for (sqlite::Statement rows = connection.prepare("SELECT name, seq FROM sqlite_sequence"); rows.step();)
      origin.given[rows.text(0)] = rows.integer(1);
  }
  origin.store = sqlite::openFile(file, origin.password);
  return origin;
}

}  // namespace

Origin openOrigin(const std::string& word) {
  const auto address = serverAddress(word);
  return address ? openServerOrigin(*address) : openFileOrigin(word);
}

}  // namespace tavoline::tool
