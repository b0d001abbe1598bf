#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "gestures/Waiter.h"
#include "torture/Journal.h"

namespace tavoline::test {

int setting(const char* name, int otherwise);  ///< A number of the environment.

using Chance = std::mt19937;
int upTo(Chance& chance, int most);

/// A workstation at random gestures on the store of the working directory, which tells a pipe of its writes.
class Station {
 public:
  Station(int pipe, Chance& chance);

  void serveSomebody();
  void logIn() { waiter_.logIn(); }
  /// Lets go of what a gesture that failed has left, and sets free what a dead predecessor held.
  void beginAnew();

 private:
  void serve();

  TDM dm_;
  Menu menu_ = (beginAnew(), Menu::of(dm_));
  Waiter waiter_{dm_, menu_};
  Chance& chance_;
};

/// A workstation in a process of its own, with the journal of its writes.
class Life {
 public:
  Life(void (*work)(int pipe, Chance&), Chance& chance);
  ~Life();  ///< By SIGKILL, if it still lives.
  Life(const Life&) = delete;
  Life& operator=(const Life&) = delete;

  /// Lets it work until a random number of writes was acknowledged, and a random moment more.
  void live(JournalReader& journal, Chance& chance);
  /// Kills it, and reads what it told before. It must not have ended by itself.
  void kill(JournalReader& journal);
  /// Waits until it has stopped by itself, and reads what it told before. False if it ended.
  bool stopped(JournalReader& journal);
  void goOn();

 private:
  pid_t child_ = 0;
  int pipe_ = -1;
};

/// Lets a workstation work for a random while and kills it. What it told before it died.
JournalReader lifeAndDeath(void (*work)(int, Chance&), Chance& chance);
/// A workstation's life, until it is killed.
[[noreturn]] void work(int pipe, Chance& chance);

/// What the check says of a store, less what a gesture cut short leaves behind by design: it is a series of
/// writes and no transaction, so that an order can be finished without its total, on a table that is not free
/// yet.
std::vector<std::string> damage(const std::string& store);

}  // namespace tavoline::test
