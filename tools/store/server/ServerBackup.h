#pragma once

#include <string>

#include "data/store/postgres/Address.h"

namespace tavoline::tool {

/// Writes what the database of a server holds at this moment into the file `target`, by the engine's own
/// `pg_dump`, in its custom form; workstations go on. Throws StoreError.
void backupServer(const postgres::Address& address, const std::string& target);

}  // namespace tavoline::tool
