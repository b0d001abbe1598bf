#pragma once

#include "data/schema/Catalog.h"
#include "data/store/WriteCounts.h"
#include "data/store/postgres/Connection.h"

namespace tavoline::postgres {

/// The question for the counts of the rows written, and what its answer tells.
Question countsQuestion();
WriteCounts countsIn(const Answer& answer);

/// The tables as the database declares them, without the store's own record and the row numbers.
Catalog readCatalog(Connection& connection);

}  // namespace tavoline::postgres
