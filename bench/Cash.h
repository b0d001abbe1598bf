#pragma once

#include <functional>
#include <vector>

#include "bench/Glass.h"

namespace tavoline::bench {

/// A gesture of the evening at the cash: what stands before it, what is timed, and what ends it.
struct CashGesture {
  const char* name;
  std::function<void(Glass&)> before, gesture, after;
};

/// The journal, the closing of a day of 400 orders until its summary is painted, each of its reports, and its
/// save until the sheet is prepared.
const std::vector<CashGesture>& cashGestures();

}  // namespace tavoline::bench
