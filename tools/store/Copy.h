#pragma once

#include <cstdint>
#include <string>

namespace tavoline::tool {

struct CopyReport {
  std::int64_t rows = 0;
  std::size_t tables = 0;
};

/// Makes the store `to` out of the store `from`, each a file or the address of a server: every row with its
/// number, the numbers that were given, the password. What was written is read back and compared, table by
/// table, before anybody sees it. Workstations may go on with `from`; what they write meanwhile is not
/// copied. Throws StoreError, also if `to` holds anything, which then stays as it was.
CopyReport copyAcross(const std::string& from, const std::string& to);

}  // namespace tavoline::tool
