#pragma once

#include <string>
#include <vector>

namespace tavoline::tool {

/// Who has the store open on this computer, how many versions of it each holds and since when, and how long
/// the log is: a line each. Opens and alters nothing. Throws StoreError if there is no such file.
std::vector<std::string> versionsOf(const std::string& path);

}  // namespace tavoline::tool
