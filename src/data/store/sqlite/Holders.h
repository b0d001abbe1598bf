#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data/store/sqlite/HolderRecord.h"

namespace tavoline::sqlite {

/// A process that has a store open on this computer.
struct Holder {
  pid_t process = 0;
  std::string program;
  int marks =
      0;  ///< Places of the log, or the file itself, at which it reads this moment; versions may share one.
  bool inLog = false;  ///< One of them keeps the log from starting over.
  std::optional<HolderEntry> said;
};

/// All processes that have the store open, by the locks that the system knows of; opens and alters nothing.
std::vector<Holder> holdersOf(const std::string& store);

}  // namespace tavoline::sqlite
