#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

#include "bench/Glass.h"
#include "bench/Scene.h"

namespace tavoline::bench {

constexpr int kRounds = 21, kFewRounds = 3;

using Body = std::function<void(benchmark::State&)>;

/// Registers a measure on a store, by its name and size.
void add(const Scene& scene, const std::string& what, int iterations, const Body& body, int rounds = kRounds);
void addGestures(const Scene& scene, const std::vector<Gesture>& gestures);

// Bodies; each times its gesture and nothing of what lies between two.

void rawTap(benchmark::State& state);
void tap(benchmark::State& state);
void qtTap(benchmark::State& state);
void start(benchmark::State& state);
void takeAndClose(benchmark::State& state, bool closing);
void tapOnScreen(benchmark::State& state, bool painted);
void startProgram(benchmark::State& state);

}  // namespace tavoline::bench
