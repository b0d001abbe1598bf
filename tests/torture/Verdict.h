#pragma once

#include <map>
#include <string>
#include <vector>

#include "torture/Journal.h"

namespace tavoline::test {

using Contents = std::map<std::string, std::string>;  ///< The rows of each table as text.

/// A copy of a store, whatever its engine, in a file, on which what the journal tells is done again.
class Witness {
 public:
  explicit Witness(std::string store);

  /// Compares the store with the copy, row by row: every acknowledged write is there, the one under way is
  /// there whole or not at all, and nothing else. The tables that differ; none is well, and then the copy is
  /// as the store for another run.
  std::vector<std::string> verdict(const JournalReader& journal);

 private:
  std::string store_, copy_;
};

}  // namespace tavoline::test
