#include "bench/Process.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <fstream>

namespace tavoline::bench {

double processorMilliseconds() {
  struct rusage used = {};
  ::getrusage(RUSAGE_SELF, &used);
  const auto of = [](const timeval& time) {
    return 1000.0 * double(time.tv_sec) + double(time.tv_usec) / 1000;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

double residentMegabytes() {
  std::ifstream status("/proc/self/statm");
  long size = 0, resident = 0;
  status >> size >> resident;
  return double(resident) * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

double percentile(std::vector<double> values, double part) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[std::min(values.size() - 1, static_cast<std::size_t>(part * double(values.size())))];
}

void judge(const char* what, double value, double budget) {
  std::printf("%-44s %8.2f %8.2f  %s\n", what, value, budget, value <= budget ? "kept" : "OVER");
}

}  // namespace tavoline::bench
