#pragma once

#include "data/schema/Catalog.h"
#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

/// The tables as the file declares them, without the store's own record and the row numbers.
Catalog readCatalog(Connection& connection);

}  // namespace tavoline::sqlite
