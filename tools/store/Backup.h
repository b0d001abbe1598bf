#pragma once

#include <string>

namespace tavoline::tool {

/// Copies the store `path`, as it stands at one moment, to `target` while the workstations go on. The copy is
/// read through before it gets its name; a file of that name is never replaced. Throws StoreError.
void backupStore(const std::string& path, const std::string& target);

}  // namespace tavoline::tool
