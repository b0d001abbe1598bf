#pragma once

#include <cstdint>
#include <numeric>
#include <random>
#include <span>

namespace tavoline::tool {

/// Chance with a seed: the same on every machine, which the standard's distributions do not promise.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  int below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }
  int between(int low, int high) { return low + below(high - low + 1); }  ///< Both included.
  bool chance(int percent) { return below(100) < percent; }

  template <typename Collection>
  const auto& of(const Collection& collection) {
    return *(std::begin(collection) + below(static_cast<int>(std::size(collection))));
  }

  /// An index into `weights`, as often as its weight says.
  std::size_t weighted(std::span<const int> weights) {
    int rest = below(std::accumulate(weights.begin(), weights.end(), 0));
    std::size_t index = 0;
    while (rest >= weights[index]) rest -= weights[index++];
    return index;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace tavoline::tool
