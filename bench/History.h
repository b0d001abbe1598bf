#pragma once

#include <vector>

#include "bench/Glass.h"

namespace tavoline::bench {

/// Opening, filtering, moving to the end, printing a day: each from the press until the result is painted.
const std::vector<Gesture>& historyGestures();

}  // namespace tavoline::bench
