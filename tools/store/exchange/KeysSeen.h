#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>

#include "data/value/Value.h"

namespace tavoline::tool {

/// The keys of a table that came so far. Numbers that follow one another cost nothing.
class KeysSeen {
 public:
  /// False if the key came before; a missing key may come any number of times.
  bool add(const Value& key);

 private:
  bool addNumber(std::int64_t number);

  std::map<std::int64_t, std::int64_t> runs_;  // the first and the last number of each
  std::unordered_set<std::string> texts_;
};

}  // namespace tavoline::tool
