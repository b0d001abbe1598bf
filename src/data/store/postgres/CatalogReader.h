#pragma once

#include <map>
#include <string>

#include "data/schema/Catalog.h"
#include "data/store/postgres/Connection.h"

namespace tavoline::postgres {

/// How many rows of each table were written, by its folded name.
using WriteCounts = std::map<std::string, std::int64_t, std::less<>>;

/// The question for these counts, and what its answer tells.
Question countsQuestion();
WriteCounts countsIn(const Answer& answer);

/// The tables as the database declares them, without the store's own record and the row numbers.
Catalog readCatalog(Connection& connection);

}  // namespace tavoline::postgres
