#pragma once

#include <vector>

namespace tavoline::bench {

/// Milliseconds that this process has used a processor: what a gesture costs, whatever else the machine does.
double processorMilliseconds();

double residentMegabytes();  ///< Of this process.

/// The value that `part` (0 to 1) of all do not exceed; 0 where there is none.
double percentile(std::vector<double> values, double part);

/// Prints what was measured beside its budget, and whether it was kept.
void judge(const char* what, double value, double budget);

}  // namespace tavoline::bench
