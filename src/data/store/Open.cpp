#include "data/store/ConnectionString.h"
#include "data/store/Location.h"
#include "data/store/Store.h"
#include "data/store/postgres/Opening.h"
#include "data/store/sqlite/Opening.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

// The password's key is what every installation's connection string bears.
constexpr const char* passwordKey = "Jet OLEDB:Database Password";

}  // namespace

std::shared_ptr<Store> Store::open(std::string_view connectionString) {
  const ConnectionString connection(connectionString);
  const std::string file = connection.get("Data Source");
  if (file.empty())
    throw StoreError("La chaîne de connexion ne nomme aucun fichier de données (« Data Source »).");
  const Location found = locate(file);
  const std::string password = connection.get(passwordKey);
  if (postgres::isAddress(found.header))
    return postgres::openServer(postgres::addressIn(found.name, found.path), password);
  return sqlite::openFile(found, password);
}

}  // namespace tavoline
