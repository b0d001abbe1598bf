#pragma once

#include <string>

#include "bench/Scene.h"

namespace tavoline::bench {

/// Resident memory of a process of its own, in kilobytes.
struct Memory {
  double resident = 0;
  double peak = 0;
  double sessions = 0;  ///< What is the server's sessions' own, where the store is on one.
};

/// Runs the memory program in the scene's store: `orders` whole orders after a start and a login.
Memory measureMemory(const std::string& program, const Scene& scene, int orders);

}  // namespace tavoline::bench
