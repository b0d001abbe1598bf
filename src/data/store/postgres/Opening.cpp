#include "data/store/postgres/Opening.h"

#include "data/schema/Identity.h"
#include "data/store/postgres/PostgresStore.h"
#include "data/value/Errors.h"

namespace tavoline::postgres {

namespace {

constexpr int oldestServer = 150000;

bool hasRecord(Connection& connection) {
  return !connection.ask(Question{"SELECT to_regclass('public.' || $1)", {std::string(schema::kRecordTable)}})
              .isNull(0, 0);
}

}  // namespace

std::unique_ptr<Connection> reach(std::shared_ptr<Server> server) {
  auto connection = std::make_unique<Connection>(std::move(server));
  const Address& address = connection->address();
  if (connection->version() < oldestServer)
    throw StoreError("Le serveur des données " + address.place + " est d'une version trop ancienne (" +
                     connection->parameter("server_version") +
                     ") : il faut PostgreSQL 15 ou plus. Mettez le serveur à jour.");
  if (connection->parameter("server_encoding") != "UTF8")
    throw StoreError(
        "La base « " + address.database +
        " » ne garde pas les textes en UTF-8. Faites-en une autre par « tavoline-store create ».");
  return connection;
}

StoreRecord recordOf(Connection& connection) {
  return [&connection](std::string_view key) -> std::optional<std::string> {
    if (!hasRecord(connection)) return std::nullopt;
    const Answer row =
        connection.ask(Question{"SELECT valeur FROM tavoline_store WHERE cle = $1", {std::string(key)}});
    if (row.rows() == 0) return std::nullopt;
    return row.text(0, 0);
  };
}

std::shared_ptr<Store> openServer(const Address& address, const std::string& password) {
  auto server = std::make_shared<Server>();
  server->address = address;
  auto writer = reach(server);
  if (!hasRecord(*writer))
    throw StoreError("La base « " + address.database + " » du serveur des données " + address.place +
                     " ne contient pas de données Tavoline. Vérifiez l'adresse dans « " + address.name +
                     " », ou créez des données neuves par « tavoline-store create ».");
  admit(address.name, recordOf(*writer), password);
  return std::make_shared<PostgresStore>(std::move(server), std::move(writer));
}

}  // namespace tavoline::postgres
