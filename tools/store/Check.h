#pragma once

#include <string>
#include <vector>

namespace tavoline::tool {

/// What is wrong with the store `path`, one French sentence a finding; none if it is whole. Reads only, and
/// lets the workstations go on. Throws StoreError if the file cannot be looked at at all.
std::vector<std::string> checkStore(const std::string& path);

}  // namespace tavoline::tool
