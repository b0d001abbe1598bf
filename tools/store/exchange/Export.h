#pragma once

#include <string>

#include "tools/store/exchange/Description.h"

namespace tavoline::tool {

/// Writes the store `path`, as it is at this moment, into a folder that appears whole or not at all: a file
/// per table (RFC 4180), the pictures by their digest, a description. Workstations may go on. Throws
/// StoreError.
Description exportStore(const std::string& path, const std::string& folder);

}  // namespace tavoline::tool
