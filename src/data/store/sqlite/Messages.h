#pragma once

#include <sqlite3.h>

#include <string>

namespace tavoline::sqlite {

/// Throws the StoreError for a failed call: what happened, to what, what to do; the engine's own words are
/// its detail. `file` is what the user calls the store.
[[noreturn]] void fail(sqlite3* connection, int code, const std::string& file);

}  // namespace tavoline::sqlite
