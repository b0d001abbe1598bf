#include "bench/Figures.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "bench/Cash.h"
#include "bench/History.h"
#include "bench/Statistics.h"

namespace tavoline::bench {
namespace {

/// One line of the table: a ratio of two measures, and what it may be at most (0: no budget).
struct Ratio {
  std::string what;
  std::string over, under;
  double budget = 0;
};

std::string shown(double value, const char* unit) {
  char text[64];
  std::snprintf(text, sizeof text, value < 10 ? "%.2f %s" : "%.0f %s", value, unit);
  return text;
}

}  // namespace

std::string sized(const std::string& what, int orders) {
  return what + ' ' + std::to_string(orders);
}

void Figures::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred) throw std::runtime_error(run.error_message);
    if (run.run_type != Run::RT_Aggregate) continue;
    if (run.aggregate_name == "least")
      values_[run.run_name.function_name + " least"] = run.counters.at("p50 ms");
    if (run.aggregate_name != "median") continue;
    ConsoleReporter::ReportRuns({run});
    values_[run.run_name.function_name] = run.counters.at("p50 ms");
    values_[run.run_name.function_name + " p99"] = run.counters.at("p99 ms");
    for (const char* toll : {"ran", "waited"})
      if (const auto found = run.counters.find(toll + std::string(" ms")); found != run.counters.end())
        values_[run.run_name.function_name + ' ' + toll] = found->second;
  }
}

double Figures::get(const std::string& name) const {
  const auto found = values_.find(name);
  if (found == values_.end()) throw std::runtime_error("not measured: " + name);
  return found->second;
}

void Figures::printRatios(int small, int large) const {
  std::vector<Ratio> ratios;
  const auto bySize = [&](const std::string& what, double budget) {
    ratios.push_back({what + ", large store / small", sized(what, large), sized(what, small), budget});
  };
  const auto byPeer = [&](const std::string& what, const std::string& peer, int orders, double budget) {
    ratios.push_back({sized(what, orders) + " / " + peer, sized(what, orders), sized(peer, orders), budget});
  };
  bySize("tap", 1.15);
  byPeer("tap", "three writes", small, 2.5);
  byPeer("tap", "three writes", large, 2.5);
  bySize("tap on the screen", 1.15);
  byPeer("tap on the screen", "three writes", small, 2.5);
  byPeer("tap on the screen", "three writes", large, 2.5);
  byPeer("tap", "tap on Qt's models", small, 0);
  byPeer("tap", "tap on Qt's models", large, 0);
  bySize("start", 1.2);
  bySize("start of the program", 1.2);
  bySize("take a table", 0);
  bySize("close a table", 0);
  for (const Gesture& gesture : historyGestures()) bySize(gesture.name, 0);
  for (const Gesture& gesture : cashGestures()) bySize(gesture.name, 1.2);
  for (const Gesture& gesture : statisticsGestures())
    ratios.push_back({std::string(gesture.name) + ", large store / month", sized(gesture.name, large),
                      sized(gesture.name, kOrdersOfMonth), 1.2});
  byPeer("tap beside a long read", "tap", large, 1.3);
  byPeer("three writes beside a long read", "three writes", large, 0);
  byPeer("tap beside a long read", "three writes beside a long read", large, 0);
  byPeer("tap, half a millisecond away", "three writes, half a millisecond away", large, 0);
  bySize("memory of the server's sessions after start", 0);
  bySize("memory of the server's sessions after a day", 0);
  bySize("memory after start", 1.2);
  bySize("memory after a day", 1.2);

  std::printf("\n%-62s %12s %12s %8s %8s %8s\n", "", "", "", "ratio", "of least", "budget");
  for (const Ratio& ratio : ratios) {
    if (!has(ratio.over) || !has(ratio.under)) continue;
    const bool memory = ratio.over.starts_with("memory");
    const auto text = [&](const std::string& name) {
      return memory ? shown(get(name) / 1024, "MB") : shown(get(name), "ms");
    };
    const double value = get(ratio.over) / get(ratio.under);
    std::printf("%-62s %12s %12s %8.3f", ratio.what.c_str(), text(ratio.over).c_str(),
                text(ratio.under).c_str(), value);
    if (has(ratio.over + " least"))
      std::printf(" %8.3f", get(ratio.over + " least") / get(ratio.under + " least"));
    else
      std::printf(" %8s", "");
    if (ratio.budget > 0) std::printf(" %8.2f  %s", ratio.budget, value <= ratio.budget ? "kept" : "OVER");
    std::printf("\n");
  }
  for (const char* what :
       {"three writes", "tap", "three writes beside a long read", "tap beside a long read"}) {
    const std::string name = sized(what, large);
    if (has(name + " ran"))
      std::printf("%-44s %12s on a processor, %s ready and waiting for one\n", name.c_str(),
                  shown(get(name + " ran"), "ms").c_str(), shown(get(name + " waited"), "ms").c_str());
  }
  for (const auto& [what, atMost] : {std::pair("tap to paint", 50), std::pair("start of the program", 500),
                                     std::pair("cash, a day begun", 100)}) {
    const std::string name = sized(what, large) + " p99";
    if (!has(name)) continue;
    std::printf("%-44s %12s %23d ms  %s\n", name.c_str(), shown(get(name), "ms").c_str(), atMost,
                get(name) <= atMost ? "kept" : "OVER");
  }
}

}  // namespace tavoline::bench
