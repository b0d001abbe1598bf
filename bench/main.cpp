// Measures what history must not cost. Arguments: the folder of generated stores (see bench/run), the program
// that measures memory, then Google Benchmark's own flags.

#include <benchmark/benchmark.h>

#include <QtWidgets/QApplication>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Cash.h"
#include "bench/Figures.h"
#include "bench/History.h"
#include "bench/Measures.h"
#include "bench/Memory.h"
#include "bench/Server.h"
#include "bench/Statistics.h"
#include "toolkit/theme/Theme.h"

namespace tavoline::bench {
namespace {

constexpr int kSmall = 1000, kLarge = 600000;
constexpr int kDay = 300;  // orders

void addAll(const Scene& scene, bool isLarge) {
  add(scene, "three writes", 64, rawTap);
  add(scene, "tap", 64, tap);
  add(scene, "tap on the screen", 24, [](auto& state) { tapOnScreen(state, false); });
  add(scene, "tap to paint", 24, [](auto& state) { tapOnScreen(state, true); });
  add(scene, "start", 20, start);
  add(scene, "start of the program", 3, startProgram);
  add(scene, "take a table", 20, [](auto& state) { takeAndClose(state, false); });
  add(scene, "close a table", 20, [](auto& state) { takeAndClose(state, true); });
  addGestures(scene, cashGestures());
  if (onServer(scene)) return;
  add(scene, "tap on Qt's models", isLarge ? 1 : 20, qtTap, kFewRounds);
  addGestures(scene, historyGestures());
}

int measure(int count, char** arguments) {
  if (count < 3) throw std::runtime_error("bench: the folder of stores and the memory program are wanted");
  const std::string data = std::filesystem::absolute(arguments[1]),
                    memoryProgram = std::filesystem::absolute(arguments[2]);
  std::vector<char*> flags{arguments[0]};
  std::string inTurn = "--benchmark_enable_random_interleaving=true";  // one bad minute hurts all alike
  flags.push_back(inTurn.data());
  flags.insert(flags.end(), arguments + 3, arguments + count);
  int flagCount = static_cast<int>(flags.size());
  benchmark::Initialize(&flagCount, flags.data());

  const Scene small(data, kSmall), large(data, kLarge);
  for (const Scene* scene : {&small, &large}) addAll(*scene, scene == &large);
  std::optional<Scene> month;
  std::unique_ptr<FarScene> far;
  if (onServer(large)) {
    far = std::make_unique<FarScene>(large);
    add(far->scene(), "three writes, half a millisecond away", 64, rawTap);
    add(far->scene(), "tap, half a millisecond away", 64, tap);
    const auto addBeside = [&](const std::string& what, const Body& body) {
      add(large, what + " beside a long read", 64, [&memoryProgram, body](auto& state) {
        const LongRead reading(memoryProgram);
        body(state);
      });
    };
    addBeside("three writes", rawTap);
    addBeside("tap", tap);
  } else {
    month.emplace(data, kOrdersOfMonth);
    addGestures(*month, statisticsGestures());
    addGestures(large, statisticsGestures());
    addGestures(large, statisticsOfYear());
  }
  Figures figures;
  benchmark::RunSpecifiedBenchmarks(&figures);
  for (const Scene* scene : {&small, &large}) {
    scene->enter();
    for (const auto& [when, orders] : {std::pair("after start", 0), std::pair("after a day", kDay)}) {
      const Memory memory = measureMemory(memoryProgram, *scene, orders);
      figures.set(sized(std::string("memory ") + when, scene->orders()), memory.resident);
      if (onServer(*scene))
        figures.set(sized(std::string("memory of the server's sessions ") + when, scene->orders()),
                    memory.sessions);
    }
  }
  figures.printRatios(kSmall, kLarge);
  return 0;
}

}  // namespace
}  // namespace tavoline::bench

int main(int count, char** arguments) try {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  tavoline::applyTheme(*qApp);
  return tavoline::bench::measure(count, arguments);
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return 1;
}
