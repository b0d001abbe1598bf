#pragma once

#include <string>

namespace tavoline {

/// A store as it was found under a name.
struct Location {
  std::string name;    ///< What the user calls it; sentences use it.
  std::string path;    ///< Where the file itself stands, links followed: its log stands beside it.
  std::string header;  ///< Its first bytes, which say what it is.
};

/// Looks at what stands under `name`, without leaving anything beside it. Throws StoreError with a sentence
/// unless it is a file of an engine that this program knows: missing, dangling link, folder, empty, foreign.
Location locate(const std::string& name);

}  // namespace tavoline
