// A workstation's data side alone: starts, logs in, serves so many orders, and says what it then holds in
// memory. Arguments: the folder of the store, the number of orders. Prints resident and peak kilobytes.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "gestures/Waiter.h"

namespace {

long statusLine(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long kilobytes = 0;
    if (word == name && status >> kilobytes) return kilobytes;
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 3) return EXIT_FAILURE;
  std::filesystem::current_path(arguments[1]);
  tavoline::TDM dm;
  const auto menu = tavoline::test::Menu::of(dm);
  tavoline::test::Waiter waiter(dm, menu);
  waiter.logIn();
  dm.Idle();
  waiter.serve(std::atoi(arguments[2]));
  std::printf("%ld %ld\n", statusLine("VmRSS:"), statusLine("VmHWM:"));
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return EXIT_FAILURE;
}
