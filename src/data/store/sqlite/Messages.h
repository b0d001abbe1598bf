#pragma once

#include <sqlite3.h>

#include <string>

#include "data/schema/Catalog.h"

namespace tavoline::sqlite {

/// Throws the StoreError for a failed call: what happened, to what, what to do. `file` is what the user calls
/// the store; the catalog, where there is one, puts names to a width that was exceeded.
[[noreturn]] void fail(sqlite3* connection, int code, const std::string& file,
                       const Catalog* catalog = nullptr);

}  // namespace tavoline::sqlite
