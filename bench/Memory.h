#pragma once

#include <string>

#include "bench/Scene.h"

namespace tavoline::bench {

/// Resident memory of a process of its own, in kilobytes.
struct Memory {
  double resident = 0;
  double peak = 0;
};

/// Runs the memory program in the scene's store: `orders` whole orders after a start and a login.
Memory measureMemory(const std::string& program, const Scene& scene, int orders);

}  // namespace tavoline::bench
