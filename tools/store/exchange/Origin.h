#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "data/store/Store.h"

namespace tavoline::tool {

/// A store to take rows from, whatever its engine.
struct Origin {
  std::shared_ptr<Store> store;
  std::string password;
  std::map<std::string, std::int64_t, std::less<>> given;  ///< The highest row number of each table.
};

/// Opens what `word` is or names: a file, the address of a server, or a file that holds one; whatever
/// password it records. Throws StoreError.
Origin openOrigin(const std::string& word);

}  // namespace tavoline::tool
