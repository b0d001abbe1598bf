#include "bench/Toll.h"

#include <fstream>

#include "bench/Raw.h"

namespace tavoline::bench {

void Toll::list() {
  processes_ = ownSessions();
  if (!processes_.empty()) processes_.emplace_back("self");
}

void Toll::begin() {
  add(-1);
}

void Toll::end() {
  add(1);
  if (!processes_.empty()) ++times_;
}

void Toll::add(double sign) {
  for (const std::string& process : processes_) {
    double ran = 0, waited = 0;
    std::ifstream("/proc/" + process + "/schedstat") >> ran >> waited;
    ran_ += sign * ran;
    waited_ += sign * waited;
  }
}

}  // namespace tavoline::bench
