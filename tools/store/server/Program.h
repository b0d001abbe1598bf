#pragma once

#include <string>
#include <vector>

#include "data/store/postgres/Address.h"

namespace tavoline::tool {

/// Runs one of the engine's own programs on the database of a server, by its name and its arguments but that
/// of the database; it says on the standard error what hinders it. Gives whether it succeeded. Throws
/// StoreError if it is not installed.
bool runProgram(const std::vector<std::string>& words, const postgres::Address& address);
/// The same for one that needs no server.
bool runProgram(const std::vector<std::string>& words);

}  // namespace tavoline::tool
