#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace tavoline::tool {

/// Runs the tool with `arguments` (without its own name) and returns its exit status: 0 done, or a store
/// found whole; 1 failed, or a store found wanting; 2 called wrongly. Throws nothing.
int runTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace tavoline::tool
