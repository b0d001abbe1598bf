#pragma once

#include "data/schema/Catalog.h"
#include "data/store/WriteCounts.h"
#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

/// Whether the file itself counts what is written to each of its tables.
bool keepsCounts(Connection& connection, const Catalog& catalog);
/// These counts in the connection's version.
WriteCounts readCounts(Connection& connection);

/// The tables as the file declares them, without the store's own record and the row numbers.
Catalog readCatalog(Connection& connection);

}  // namespace tavoline::sqlite
