#pragma once

#include <string>
#include <vector>

#include "torture/Journal.h"

namespace tavoline::test {

/// The store before a run: how many rows each table has, and its highest row number.
struct Counts {
  struct Table {
    std::string name;
    long long rows = 0, highest = 0;
  };
  std::vector<Table> tables;

  static Counts of(const std::string& path);
};

/// Compares the store with what the journal tells: every acknowledged write is there, the one under way is
/// there whole or not at all, nothing else changed in number. One sentence for each thing wrong; none is
/// well.
std::vector<std::string> verdict(const std::string& path, const Counts& before, const JournalReader& journal);

}  // namespace tavoline::test
