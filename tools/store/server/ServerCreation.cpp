#include "tools/store/server/ServerCreation.h"

#include <sys/stat.h>

#include <fstream>

#include "data/schema/Schema.h"
#include "data/store/Definitions.h"
#include "data/store/postgres/Engine.h"
#include "data/store/postgres/Opening.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "tools/store/server/ServerFiller.h"

namespace tavoline::tool {

namespace {

using postgres::Address;
using postgres::Connection;
using postgres::Question;

std::string named(std::string_view name) {
  return postgres::engine().quotedName(name);
}

bool exists(Connection& connection, const std::string& question, const std::string& name) {
  return connection.ask(Question{question, {name}}).rows() > 0;
}

// What only a role may do that the server's administrator trusts with it.
void executeAsMaker(Connection& connection, const std::string& statement) try {
  connection.execute(statement);
} catch (const StoreError& refusal) {
  if (refusal.detail().find("42501") == std::string::npos) throw;
  const std::string role = PQuser(connection.handle());
  throw StoreError("Le rôle « " + role +
                       " » n'a pas le droit de créer une base et ses rôles sur le serveur "
                       "des données " +
                       connection.address().place +
                       ", et rien n'a été créé. Recommencez sous le rôle de l'administrateur du serveur, ou "
                       "demandez-lui ce droit : ALTER ROLE " +
                       named(role) + " CREATEDB CREATEROLE.",
                   refusal.detail());
}

// Reached where it is; made where the server has none of the name.
std::unique_ptr<Connection> reachOrMake(const Address& address, bool& made) {
  try {
    return reachServer(address);
  } catch (const StoreError&) {
    std::unique_ptr<Connection> server;
    try {
      server = reachServer(postgres::beside(address, "postgres"));
    } catch (const StoreError&) {
    }
    if (!server || exists(*server, "SELECT 1 FROM pg_database WHERE datname = $1", address.database)) throw;
    executeAsMaker(*server, "CREATE DATABASE " + named(address.database) +
                                " TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'");
    made = true;
  }
  return reachServer(address);
}

void requireEmpty(Connection& connection) {
  if (connection.ask(Question{"SELECT 1 FROM pg_class WHERE relnamespace = 'public'::regnamespace LIMIT 1"})
          .rows() > 0)
    throw StoreError("La base « " + connection.address().database +
                     " » contient déjà des tables et n'a pas été touchée. Choisissez un autre nom.");
}

}  // namespace

NewDatabase::NewDatabase(const Address& address)
    : address_(address), connection_(reachOrMake(address, made_)) {
  requireEmpty(*connection_);
}

NewDatabase::~NewDatabase() {
  if (kept_) return;
  try {
    takeBack();
  } catch (const StoreError&) {
    // A server that has gone meanwhile keeps an empty database, which the next attempt takes.
  }
}

void NewDatabase::takeBack() {
  connection_.reset();  // and with it what it has not committed
  if (made_)
    reachServer(postgres::beside(address_, "postgres"))
        ->execute("DROP DATABASE " + named(address_.database) + " WITH (FORCE)");
  if (roles_.empty()) return;
  const auto server = reachServer(made_ ? postgres::beside(address_, "postgres") : address_);
  for (const std::string& role : roles_) {
    if (!exists(*server, "SELECT 1 FROM pg_roles WHERE rolname = $1", role)) continue;
    server->execute("DROP OWNED BY " + named(role));
    server->execute("DROP ROLE " + named(role));
  }
}

void NewDatabase::makeRole(const std::string& role, const std::string& kind) {
  if (exists(*connection_, "SELECT 1 FROM pg_roles WHERE rolname = $1", role)) return;
  executeAsMaker(*connection_, "CREATE ROLE " + named(role) + ' ' + kind);
  roles_.push_back(role);
}

void NewDatabase::makeRoles() {
  const std::string owner = named(ownerRole(address_)), base = named(address_.database),
                    workstations = named(workstationRole(address_));
  makeRole(ownerRole(address_), "NOLOGIN");
  makeRole(workstationRole(address_), "LOGIN");
  executeAsMaker(*connection_, "GRANT " + owner + " TO CURRENT_USER");
  connection_->execute("REVOKE ALL ON DATABASE " + base + " FROM PUBLIC");
  connection_->execute("GRANT CONNECT ON DATABASE " + base + " TO " + owner + ", " + workstations);
  connection_->execute("REVOKE ALL ON SCHEMA public FROM PUBLIC");
  connection_->execute("GRANT ALL ON SCHEMA public TO " + owner);
  connection_->execute("GRANT USAGE ON SCHEMA public TO " + workstations);
}

void grantRows(Connection& connection) {
  const std::string role = named(workstationRole(connection.address()));
  for (const schema::Table& table : schema::tables())
    connection.execute("GRANT SELECT, INSERT, UPDATE, DELETE ON " + named(table.name) + " TO " + role);
  for (const std::string_view own : {schema::kRecordTable, schema::kCountTable})
    connection.execute("GRANT SELECT ON " + named(own) + " TO " + role);
}

std::optional<Address> serverAddress(const std::string& word) {
  if (postgres::isAddress(word)) {
    const Address address = postgres::parseAddress(word, word);
    if (address.bearsPassword)
      throw StoreError(
          "L'adresse porte un mot de passe, que tout utilisateur de cet ordinateur pourrait lire. Mettez-le "
          "dans votre fichier « .pgpass ».");
    return address;
  }
  struct stat found = {};
  if (::stat(word.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return std::nullopt;
  std::string first;
  std::getline(std::ifstream(word), first);
  if (!postgres::isAddress(first)) return std::nullopt;
  return postgres::addressIn(word, word);
}

std::unique_ptr<Connection> reachServer(const Address& address) {
  auto server = std::make_shared<postgres::Server>();
  server->address = address;
  auto connection = postgres::reach(std::move(server));
  connection->execute("SET statement_timeout = 0; SET lock_timeout = '30s'");
  connection->waitForLongWork();
  return connection;
}

std::string ownerRole(const Address& address) {
  return address.database + "_proprietaire";
}
std::string workstationRole(const Address& address) {
  return address.database + "_poste";
}

std::string workstationLine(const Address& address) {
  const auto slashes = address.uri.find("//") + 2;
  const auto path = std::min(address.uri.find_first_of("/?", slashes), address.uri.size());
  const auto at = address.uri.rfind('@', path);
  const auto host = at == std::string::npos || at < slashes ? slashes : at + 1;
  return "postgresql://" + workstationRole(address) + '@' + address.uri.substr(host);
}

void createOnServer(const Address& address, std::string_view password, const Filling& fill) {
  NewDatabase target(address);
  Connection& connection = target.connection();
  connection.execute("BEGIN");
  target.makeRoles();
  connection.execute("SET LOCAL ROLE " + named(ownerRole(address)));
  for (const Definition& one : postgres::functionDefinitions()) connection.execute(one.text);
  for (const Definition& one : tableDefinitions(postgres::engine())) connection.execute(one.text);
  for (const std::string& row : recordStatements(postgres::engine(), password)) connection.execute(row);
  ServerFiller filler(connection);
  if (fill) fill(filler);
  filler.finish();
  for (const Definition& one : auxiliaryDefinitions(postgres::engine())) connection.execute(one.text);
  grantRows(connection);
  connection.execute("COMMIT");
  target.keep();
  connection.execute("ANALYZE");
}

}  // namespace tavoline::tool
