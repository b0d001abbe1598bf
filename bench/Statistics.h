#pragma once

#include <vector>

#include "bench/Glass.h"

namespace tavoline::bench {

/// The orders of the busy month, as many in a store of that month alone as in a large one.
constexpr int kOrdersOfMonth = 5000;

/// The statistics' screen until its charts are painted: opened, a day, a month, the month's best sellers.
const std::vector<Gesture>& statisticsGestures();
/// The same for a year of real orders, which only a large store has.
const std::vector<Gesture>& statisticsOfYear();

}  // namespace tavoline::bench
