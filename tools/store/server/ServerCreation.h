#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/store/postgres/Address.h"
#include "data/store/postgres/Connection.h"
#include "tools/store/Creation.h"

namespace tavoline::tool {

/// The address that `word`, as it stands on a command line, is or names: an address, or a file that holds
/// one. Nothing for any other file. Throws StoreError for an address with a password, which others could
/// read.
std::optional<postgres::Address> serverAddress(const std::string& word);

/// A connection for the tool's own work, which may last. Throws StoreError.
std::unique_ptr<postgres::Connection> reachServer(const postgres::Address& address);

/// The names of the two roles of a store: its owner, who does not log in, and its workstations', which may
/// read and write rows and nothing else.
std::string ownerRole(const postgres::Address& address);
std::string workstationRole(const postgres::Address& address);
/// The line to put under the store's name at each workstation.
std::string workstationLine(const postgres::Address& address);

/// The database of a store to come: it has to be empty, and is made where the server has none of the name.
/// Unless it is kept, what was made goes again: the database, and the roles.
class NewDatabase {
 public:
  /// Throws StoreError, also if the database holds anything.
  explicit NewDatabase(const postgres::Address& address);
  ~NewDatabase();
  NewDatabase(const NewDatabase&) = delete;
  NewDatabase& operator=(const NewDatabase&) = delete;

  postgres::Connection& connection() { return *connection_; }
  void makeRoles();  ///< And says what they may do in the database.
  void keep() { kept_ = true; }

 private:
  void makeRole(const std::string& role, const std::string& kind);
  void takeBack();

  postgres::Address address_;
  bool made_ = false, kept_ = false;
  std::unique_ptr<postgres::Connection> connection_;
  std::vector<std::string> roles_;  // that were made here
};

/// Lets the workstations' role read and write the rows, and read what the store says of itself.
void grantRows(postgres::Connection& connection);

/// Makes the store in the database of a server, which is made if it is missing: the roles, the seventeen
/// tables, the record, and the rows that `fill` puts in; all of it or nothing. Throws StoreError, also if the
/// database holds anything.
void createOnServer(const postgres::Address& address, std::string_view password, const Filling& fill);

}  // namespace tavoline::tool
