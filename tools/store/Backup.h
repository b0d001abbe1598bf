#pragma once

#include <string>

namespace tavoline::tool {

/// Copies the store `path`, as it stands at one moment, to `target` while the workstations go on. The copy is
/// read through before it gets its name, and is open to nobody whom the store is closed to; a file of that
/// name is never replaced. Throws StoreError.
void backupStore(const std::string& path, const std::string& target);

/// Puts a copy of `backup` in the place of the store `path`, once it has been read through. What stood there
/// is moved aside with its log, under the name that is given back (empty if nothing stood there). Throws
/// StoreError, also where somebody works on the store; it then stands as it did. On a server the backup goes
/// into an empty database, and nothing is moved aside.
std::string restoreStore(const std::string& backup, const std::string& path);

}  // namespace tavoline::tool
