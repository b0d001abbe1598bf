#pragma once

#include <string>
#include <vector>

#include "tools/store/RowRules.h"

namespace tavoline::tool {

struct Upgrade {
  std::vector<std::string> added;  ///< What was missing or too narrow; none where the store was up to date.
  std::string backup;              ///< The copy of the store as it was; empty if nothing was added.
};

/// Throws StoreError with the findings that keep a store, as it is named here, from being upgraded; before
/// anything was touched.
void requireNone(const Findings& findings, const std::string& store);

/// Brings the definition of the store `path` to today's by adding what stands beside its tables and giving
/// their texts all their room, all of it or nothing. Copies the store beside itself first. Workstations may
/// go on; their writes wait meanwhile. Throws StoreError where it cannot: a table or column is missing, a key
/// has doubles, another version.
Upgrade upgradeStore(const std::string& path);

}  // namespace tavoline::tool
