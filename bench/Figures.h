#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace tavoline::bench {

/// Prints the median of each measure's rounds, and keeps it by name.
class Figures : public benchmark::ConsoleReporter {
 public:
  Figures() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override;

  void set(const std::string& name, double value) { values_[name] = value; }
  double get(const std::string& name) const;  ///< Throws std::runtime_error if it was not measured.
  bool has(const std::string& name) const { return values_.count(name) > 0; }

  /// The ratios with the budgets beside them.
  void printRatios(int small, int large) const;

 private:
  std::map<std::string, double> values_;
};

/// "tap 600000": the name under which a measure of one size of store is kept.
std::string sized(const std::string& what, int orders);

}  // namespace tavoline::bench
