#pragma once

#include <sys/types.h>

#include <functional>

namespace tavoline::test {

/// Another process that takes turns with the test. It has to be forked before the test opens a store: an open
/// store must not cross a fork.
class StoreProcess {
 public:
  /// The other process's side of the turns.
  class Turns {
   public:
    explicit Turns(int line) : line_(line) {}
    /// Ends this turn and waits for the next one; false when the test wants no more.
    bool next();

   private:
    int line_;
  };

  /// Runs `body` in another process, up to its first `next` or its end.
  explicit StoreProcess(const std::function<void(Turns&)>& body);
  /// Lets the other process come to its end, and waits for that.
  ~StoreProcess();
  StoreProcess(const StoreProcess&) = delete;
  StoreProcess& operator=(const StoreProcess&) = delete;

  /// Lets the other process have one turn, and waits until it ends it. Throws if it died or threw instead.
  void turn();

 private:
  void waitForTurn();

  pid_t pid_ = 0;
  int line_ = -1;
};

/// Runs `body` in another process and gives its exit status as waitpid tells it; 0 if it came to its end.
int runElsewhere(const std::function<void()>& body);

}  // namespace tavoline::test
