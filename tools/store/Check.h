#pragma once

#include <string>

#include "tools/store/RowRules.h"

namespace tavoline::tool {

/// What is wrong with the store `path`, one French sentence each; none if it is whole. Reads only, and
/// lets the workstations go on. Throws StoreError if the file cannot be looked at at all.
Findings checkStore(const std::string& path);

}  // namespace tavoline::tool
