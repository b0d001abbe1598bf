#pragma once

#include <memory>
#include <string>

#include "data/store/Record.h"
#include "data/store/Store.h"
#include "data/store/postgres/Address.h"
#include "data/store/postgres/Connection.h"

namespace tavoline::postgres {

/// A connection to a server that this program can work with. Throws StoreError.
std::unique_ptr<Connection> reach(std::shared_ptr<Server> server);

/// The store's record of itself. Must not outlive the connection.
StoreRecord recordOf(Connection& connection);

/// Opens the database of a server. Throws StoreError if the server cannot be reached, refuses or is too old,
/// and for a database without a store, of a newer version, with another password.
std::shared_ptr<Store> openServer(const Address& address, const std::string& password);

}  // namespace tavoline::postgres
