#include "bench/Measures.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <stdexcept>

#include "bench/Figures.h"
#include "bench/QtModels.h"
#include "bench/Raw.h"
#include "bench/Toll.h"
#include "gestures/Waiter.h"

namespace tavoline::bench {
namespace {

using test::Menu;
using test::Waiter;

constexpr int kLines = 8;  // of an order, before the next one is begun
constexpr int kSomeRounds = 7;

/// Times one gesture per iteration, and nothing of what lies between two; keeps its 50th and 99th percentile.
class Stopwatch {
 public:
  explicit Stopwatch(benchmark::State& state) : state_(state) {}
  ~Stopwatch() {
    std::sort(seconds_.begin(), seconds_.end());
    if (seconds_.empty()) return;
    state_.counters["p50 ms"] = 1000 * seconds_[seconds_.size() / 2];
    state_.counters["p99 ms"] = 1000 * seconds_[seconds_.size() * 99 / 100];
    if (!toll_.counted()) return;
    state_.counters["ran ms"] = toll_.ran();
    state_.counters["waited ms"] = toll_.waited();
  }
  Stopwatch(const Stopwatch&) = delete;
  Stopwatch& operator=(const Stopwatch&) = delete;

  /// From the next gesture on: what it costs the processors of a server, too.
  void countToll() { toll_.list(); }

  template <class Gesture>
  void time(const Gesture& gesture) {
    toll_.begin();
    const auto began = std::chrono::steady_clock::now();
    gesture();
    const double took = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    toll_.end();
    state_.SetIterationTime(took);
    seconds_.push_back(took);
  }

 private:
  benchmark::State& state_;
  std::vector<double> seconds_;
  Toll toll_;
};

Menu menuHere() {
  TDM dm;
  return Menu::of(dm);
}

void onScreen(benchmark::State& state, const Gesture& gesture) {
  Glass glass;
  glass.logIn();
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state) {
    gesture.before(glass);
    watch.time([&] { gesture.gesture(glass); });
    glass.rest();
    gesture.after(glass);
  }
}

}  // namespace

void rawTap(benchmark::State& state) {
  const auto raw = RawTap::here();
  Stopwatch watch(state);
  watch.countToll();
  for ([[maybe_unused]] auto _ : state) {
    watch.time([&] { raw->tap(); });
    raw->idle();
  }
}

/// First taps, each of another article, eight to an order.
void tap(benchmark::State& state) {
  const Menu menu = menuHere();
  TDM dm;
  Waiter waiter(dm, menu);
  waiter.logIn();
  int done = 0;
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state) {
    const auto line = static_cast<std::size_t>(done++ % kLines);
    if (line == 0) {
      if (done > 1) waiter.closeTable();
      if (!waiter.takeTable(menu.tables.front())) throw std::runtime_error("the table is held");
      watch.countToll();
    }
    dm.Idle();
    watch.time([&] { waiter.tap(menu.articles[line]); });
  }
  waiter.closeTable();
}

void qtTap(benchmark::State& state) {
  const Menu menu = menuHere();
  QtModels models;
  std::size_t done = 0;
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state)
    watch.time([&] { models.tap(menu.articles[done++ % kLines], menu.tables.front()); });
}

/// From nothing to the login screen's first answer: the store opened, every dataset open, a login found.
void start(benchmark::State& state) {
  const Menu menu = menuHere();
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state)
    watch.time([&] {
      TDM dm;
      Waiter(dm, menu).logIn();
    });
}

void takeAndClose(benchmark::State& state, bool closing) {
  const Menu menu = menuHere();
  TDM dm;
  Waiter waiter(dm, menu);
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state) {
    const auto take = [&] { waiter.takeTable(menu.tables.front()); };
    const auto close = [&] { waiter.closeTable(); };
    closing ? take() : watch.time(take);
    for (std::size_t line = 0; line < kLines; ++line) waiter.tap(menu.articles[line]);
    dm.Idle();
    closing ? watch.time(close) : close();
    dm.Idle();
  }
}

/// The same first taps on the program's own screens: to the end of the tile's handler, or until it is
/// painted.
void tapOnScreen(benchmark::State& state, bool painted) {
  Glass glass;
  glass.logIn();
  std::size_t tile = 0;
  int repaints = 0;
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state) {
    if (tile == 0) glass.takeTable();
    glass.lower(tile);
    watch.time([&] {
      glass.lift();
      if (painted) glass.paint();
    });
    if (!painted) glass.paint();
    glass.rest();
    repaints = std::max(repaints, glass.linePaints());
    if (++tile < glass.tiles()) continue;
    glass.saveOrder();
    tile = 0;
  }
  state.counters["repaints"] = repaints;
}

/// From nothing to the login screen painted.
void startProgram(benchmark::State& state) {
  Stopwatch watch(state);
  for ([[maybe_unused]] auto _ : state) {
    std::optional<Glass> glass;
    watch.time([&] { glass.emplace(); });
  }
}

void add(const Scene& scene, const std::string& what, int iterations, const Body& body, int rounds) {
  benchmark::RegisterBenchmark(sized(what, scene.orders()).c_str(),
                               [&scene, body](benchmark::State& state) {
                                 scene.enter();
                                 body(state);
                               })
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(iterations)
      ->Repetitions(rounds)
      ->ComputeStatistics("least",
                          [](const std::vector<double>& all) { return *std::ranges::min_element(all); });
}

void addGestures(const Scene& scene, const std::vector<Gesture>& gestures) {
  for (const Gesture& gesture : gestures)
    add(
        scene, gesture.name, 3, [&gesture](auto& state) { onScreen(state, gesture); }, kSomeRounds);
}

}  // namespace tavoline::bench
