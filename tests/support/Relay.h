#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <list>
#include <string>
#include <thread>

namespace tavoline::test {

/// A piece of network before a server's socket: a port of 127.0.0.1 that passes everything on, late if told,
/// until the cable is out. It then neither answers nor ends anything; what was under way is lost.
class Relay {
 public:
  explicit Relay(std::string socket, std::chrono::microseconds eachWay = {});
  ~Relay();
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;

  int port() const { return port_; }
  void cableOut(bool out);  ///< Returns when nothing passes any more, or all does again.

 private:
  using Moment = std::chrono::steady_clock::time_point;
  struct Way {
    int from, to;
    std::deque<std::pair<Moment, std::string>> under;  // bytes, and when they arrive
  };
  struct Link {
    Way ways[2];
    bool over = false;
  };

  void ring();
  void work();
  void accept();
  void endAll();
  void take(Link& link, Way& way) const;
  static void give(Link& link, Way& way);

  std::string socket_;
  std::chrono::microseconds eachWay_;
  int listener_ = -1, port_ = 0, bell_[2] = {-1, -1};
  std::atomic<bool> out_ = false, seen_ = false, ending_ = false;
  std::list<Link> links_;
  std::thread thread_;
};

}  // namespace tavoline::test
