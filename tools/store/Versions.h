#pragma once

#include <ctime>
#include <string>
#include <vector>

namespace tavoline::tool {

/// Who has the store open on this computer, how many versions of it each holds and since when, and how long
/// the log is: a line each. Opens and alters nothing. Throws StoreError if there is no such file. Of a store
/// on a server: who has it open on which computer.
std::vector<std::string> versionsOf(const std::string& path);

std::string quantity(std::size_t count, const std::string& one, const std::string& more);  ///< "3 versions".
std::string clockTime(std::time_t moment);  ///< "24/11/2026 20:30:00", here.

}  // namespace tavoline::tool
