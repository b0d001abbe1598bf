#pragma once

#include <string>

#include "data/value/Value.h"

namespace tavoline {

/// What a gesture on the order has written and what it still owes, where the store refused one of its later
/// writes. The gesture that is repeated does the rest, and nothing twice.
struct Unfinished {
  bool stock = false;   ///< The line of `article` stands; its stock is not lowered yet, by `taken`.
  bool table = false;   ///< The line stands; its table is not marked yet.
  std::string article;  ///< The code.
  Value taken;
  std::string returned;  ///< The line, told by order and article, whose stock is back and which stands still.
  std::string credited;  ///< The order that the desk has been credited with and whose table is not free yet.
};

}  // namespace tavoline
