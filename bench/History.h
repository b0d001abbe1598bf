#pragma once

#include <functional>
#include <vector>

#include "bench/Glass.h"

namespace tavoline::bench {

/// A gesture on the order history: what stands before it, what is timed, and what ends it. Each may wait for
/// paint.
struct HistoryGesture {
  const char* name;
  std::function<void(Glass&)> before, gesture, after;
};

/// Opening, filtering, moving to the end, printing a day: each from the press until the result is painted.
const std::vector<HistoryGesture>& historyGestures();

}  // namespace tavoline::bench
