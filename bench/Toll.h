#pragma once

#include <string>
#include <vector>

namespace tavoline::bench {

/// How long this process and its sessions on the server run on a processor, and how long they stand ready and
/// wait for one, from each `begin` to its `end`. Nothing is counted on a store in a file.
class Toll {
 public:
  void list();  ///< The sessions that there are; asks the server.
  void begin();
  void end();
  bool counted() const { return times_ > 0; }
  double ran() const { return ran_ / times_ / 1e6; }        ///< Milliseconds, on average.
  double waited() const { return waited_ / times_ / 1e6; }  ///< The same.

 private:
  void add(double sign);

  std::vector<std::string> processes_;
  double ran_ = 0, waited_ = 0;  // nanoseconds
  int times_ = 0;
};

}  // namespace tavoline::bench
