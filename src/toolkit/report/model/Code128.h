#pragma once

#include <string_view>
#include <vector>

namespace tavoline::report {

/// The modules of a Code 128 symbol from left to right, true for a bar; no quiet zones. Empty for an empty
/// value and for one that the code cannot hold.
std::vector<bool> code128(std::string_view value);

}  // namespace tavoline::report
