#pragma once

#include "data/store/postgres/Address.h"
#include "tools/store/Upgrade.h"

namespace tavoline::tool {

/// The same in the database of a server, in one transaction, behind a copy by `pg_dump` in the working
/// folder. Throws StoreError.
Upgrade upgradeServer(const postgres::Address& address);

}  // namespace tavoline::tool
