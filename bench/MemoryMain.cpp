// A workstation's data side alone: starts, logs in, serves so many orders, and says what it then holds in
// memory. Arguments: the folder of the store, the number of orders. Prints resident and peak kilobytes, and
// those that the server's sessions have for themselves. With "year" in place of the number it tells that it
// is ready, and reads last year's best sales again and again until it is ended.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/Raw.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "gestures/Waiter.h"

namespace {

long statusLine(const std::string& process, const std::string& name) {
  std::ifstream status("/proc/" + process + "/status");
  for (std::string word; status >> word;) {
    long kilobytes = 0;
    if (word == name && status >> kilobytes) return kilobytes;
  }
  return 0;
}

long ofSessions() {
  long sum = 0;
  for (const std::string& process : tavoline::bench::sessions()) sum += statusLine(process, "RssAnon:");
  return sum;
}

[[noreturn]] void readTheYear(tavoline::TDM& dm) {
  const int year = tavoline::Clock::now().year() - 1;
  for (std::size_t read = 0;; read += dm.best2.RecordCount()) {
    dm.best2.Reopen();
    dm.best2.FilterBy("A=" + tavoline::inQuotes(std::to_string(year)));
    for (; !dm.best2.Eof(); dm.best2.Next()) read += dm.best2["designation_article"].text().size();
    std::printf("%zu\n", read);
    std::fflush(stdout);
    dm.GestureDone();
  }
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 3) return EXIT_FAILURE;
  std::filesystem::current_path(arguments[1]);
  tavoline::TDM dm;
  if (std::string(arguments[2]) == "year") readTheYear(dm);
  const auto menu = tavoline::test::Menu::of(dm);
  tavoline::test::Waiter waiter(dm, menu);
  waiter.logIn();
  dm.Idle();
  waiter.serve(std::atoi(arguments[2]));
  std::printf("%ld %ld %ld\n", statusLine("self", "VmRSS:"), statusLine("self", "VmHWM:"), ofSessions());
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return EXIT_FAILURE;
}
