#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tools/store/Secrets.h"

namespace tavoline::tool {

/// Runs the tool with `arguments` (without its own name) and returns its exit status: 0 done, or a store
/// found whole; 1 failed, or a store found wanting; 2 called wrongly. `ask` is asked for passwords; without
/// it there is nobody to ask. Throws nothing.
int runTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
            const AskSecret& ask = {});

}  // namespace tavoline::tool
