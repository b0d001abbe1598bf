#pragma once

#include "data/store/postgres/Address.h"
#include "tools/store/RowRules.h"

namespace tavoline::tool {

/// What is wrong with the store in the database of a server; changes nothing, and looks at one moment of it.
/// Throws StoreError.
Findings checkServer(const postgres::Address& address);

}  // namespace tavoline::tool
