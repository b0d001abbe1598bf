#pragma once

#include <vector>

#include "bench/Glass.h"

namespace tavoline::bench {

/// The journal, the closing of a day of 400 orders until its summary is painted, each of its reports, and its
/// save until the sheet is prepared.
const std::vector<Gesture>& cashGestures();

}  // namespace tavoline::bench
