#pragma once

#include <string>

#include "data/store/postgres/Address.h"

namespace tavoline::tool {

/// Writes what the database of a server holds at this moment into the file `target`, by the engine's own
/// `pg_dump`, in its custom form; workstations go on. Throws StoreError.
void backupServer(const postgres::Address& address, const std::string& target);

/// Whether a file is of that form.
bool isServerBackup(const std::string& path);

/// Puts such a backup into the database of a server, which is made if it is missing, with the roles that the
/// database's name gives; all of it or nothing. Throws StoreError, also if the database holds anything or the
/// backup is of something else.
void restoreServer(const std::string& backup, const postgres::Address& address);

}  // namespace tavoline::tool
