#pragma once

#include <sqlite3.h>

namespace tavoline::sqlite {

/// Gives the connection `tavoline_like(pattern, text)`: the dialect's `like`, which disregards case in all
/// letters, accented ones included. Null if either is null.
void registerFunctions(sqlite3* connection);

}  // namespace tavoline::sqlite
