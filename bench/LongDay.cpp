// A day that never ends: so many orders in one process, alone or with others on the same store, with quiet
// moments and without any. Arguments: the folder of the generated stores (see bench/run), then
//   --history N       which of them: its number of orders (1000)
//   --orders N        of each workstation (2000)
//   --stations N      processes at work on the store (1)
//   --restless        no quiet moment at all
// Prints a line per workstation and thousand orders. When the first one is through, all are killed amid their
// work, and the store is opened anew.

#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Process.h"
#include "bench/Scene.h"
#include "data/value/Errors.h"
#include "gestures/Waiter.h"

namespace {

namespace fs = std::filesystem;
using tavoline::TDM;
using tavoline::bench::judge;
using tavoline::bench::percentile;
using tavoline::bench::processorMilliseconds;
using tavoline::bench::residentMegabytes;
using tavoline::test::Menu;
using tavoline::test::Waiter;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kLines = 8;
constexpr int kBlock = 1000;  // orders to a line of the report

struct Options {
  std::string folder;
  int history = 1000, orders = 2000, stations = 1;
  bool restless = false;
};

double milliseconds(Clock::time_point since) {
  return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

double logMegabytes() {
  struct stat found = {};
  return ::stat("BDD.mdb-wal", &found) == 0 ? double(found.st_size) / (1 << 20) : 0;
}

/// Every connection has the log open once.
int connections() {
  int count = 0;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (fs::read_symlink(entry.path(), gone).string().ends_with("BDD.mdb-wal")) ++count;
  }
  return count;
}

/// What one workstation saw over a thousand orders.
struct Block {
  int station = 0, orders = 0;
  double median = 0, p99 = 0, worst = 0, cpu = 0, tap = 0, log = 0, afterQuiet = 0, resident = 0;
  int connections = 0;
};

class Station {
 public:
  Station(const Options& options, int number, int report)
      : options_(options), number_(number), report_(report) {
    for (std::size_t i = static_cast<std::size_t>(number); i < menu_.tables.size();
         i += static_cast<std::size_t>(options.stations))
      tables_.push_back(menu_.tables[i]);
    waiter_.logIn();
  }

  void work() {
    for (int done = 0; done < options_.orders; ++done) {
      const auto began = Clock::now();
      const double used = processorMilliseconds();
      serve(static_cast<std::size_t>(done));
      orders_.push_back(milliseconds(began));
      processor_.push_back(processorMilliseconds() - used);
      block_.log = std::max(block_.log, logMegabytes());
      block_.connections = std::max(block_.connections, connections());
      if (!options_.restless) rest();
      if ((done + 1) % kBlock == 0 || done + 1 == options_.orders) tell(done + 1);
    }
  }

 private:
  void serve(std::size_t turn) {
    take(tables_[turn % tables_.size()]);
    for (std::size_t line = 0; line <= kLines; ++line) {
      const auto began = Clock::now();
      waiter_.tap(menu_.articles[(turn + line % kLines) % menu_.articles.size()]);
      gestureDone();
      taps_.push_back(milliseconds(began));
    }
    waiter_.closeTable();
    gestureDone();
  }

  /// Two workstations may give an order the same number; the later one is refused and tries again.
  void take(const std::string& table) {
    for (;;) {
      try {
        if (!waiter_.takeTable(table)) throw std::runtime_error("held: " + table);
        return gestureDone();
      } catch (const tavoline::StoreError&) {
        dm_.commande.Cancel();
      }
    }
  }

  void gestureDone() { dm_.GestureDone(); }

  /// A pause of some seconds: two rests of the program.
  void rest() {
    dm_.Idle();
    dm_.Idle();
    block_.afterQuiet = std::max(block_.afterQuiet, logMegabytes());
  }

  void tell(int done) {
    block_.station = number_;
    block_.orders = done;
    block_.median = percentile(orders_, 0.5);
    block_.p99 = percentile(orders_, 0.99);
    block_.worst = percentile(orders_, 1);
    block_.cpu = percentile(processor_, 0.5);
    block_.tap = percentile(taps_, 0.5);
    block_.resident = residentMegabytes();
    char bytes[sizeof block_];  // fewer than a pipe takes at once
    std::memcpy(bytes, &block_, sizeof bytes);
    if (::write(report_, bytes, sizeof bytes) != ssize_t(sizeof bytes)) throw std::runtime_error("no report");
    orders_.clear();
    processor_.clear();
    taps_.clear();
    block_ = {};
  }

  const Options& options_;
  int number_, report_;
  TDM dm_;
  Menu menu_ = Menu::of(dm_);
  Waiter waiter_{dm_, menu_};
  std::vector<std::string> tables_;
  std::vector<double> orders_, processor_, taps_;
  Block block_;
};

Options read(int count, char** arguments) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string word = arguments[i];
    const auto number = [&] { return i + 1 < count ? std::atoi(arguments[++i]) : 0; };
    if (word == "--orders")
      options.orders = number();
    else if (word == "--history")
      options.history = number();
    else if (word == "--stations")
      options.stations = number();
    else if (word == "--restless")
      options.restless = true;
    else
      options.folder = word;
  }
  if (options.folder.empty() || options.orders < 1 || options.stations < 1)
    throw std::runtime_error("the folder of a store is wanted");
  return options;
}

/// The last thousand orders against the first, each as the mean of the workstations' medians.
void judgeDay(const std::vector<Block>& blocks, const Options& options) {
  const auto mean = [&](int orders, double Block::*figure) {
    double sum = 0;
    int found = 0;
    for (const Block& block : blocks)
      if (block.orders == orders) sum += block.*figure, ++found;
    return found == 0 ? 0 : sum / found;
  };
  const int first = std::min(kBlock, options.orders);
  double log = 0, quiet = 0;
  for (const Block& block : blocks) log = std::max(log, block.log), quiet = std::max(quiet, block.afterQuiet);
  judge("an order, the last thousand / the first",
        mean(options.orders, &Block::median) / mean(first, &Block::median), 1.15);
  judge("its processor time, the same", mean(options.orders, &Block::cpu) / mean(first, &Block::cpu), 1.15);
  judge("memory, the same", mean(options.orders, &Block::resident) / mean(first, &Block::resident), 1.2);
  judge("log, MB", log, 64);
  if (!options.restless && options.stations == 1) judge("log after a quiet moment, MB", quiet, 0);
}

/// Milliseconds from nothing to the first account found, in a process of its own.
double start() {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = ::fork();
  if (child == 0) {
    double took = 0;
    {
      const auto began = Clock::now();
      TDM dm;
      const Menu menu = Menu::of(dm);
      Waiter(dm, menu).logIn();
      took = milliseconds(began);
    }
    const bool told = ::write(ends[1], &took, sizeof took) == ssize_t(sizeof took);
    ::_exit(told ? 0 : 1);
  }
  double took = 0;
  if (::read(ends[0], &took, sizeof took) != ssize_t(sizeof took)) throw std::runtime_error("no start");
  ::waitpid(child, nullptr, 0);
  ::close(ends[0]);
  ::close(ends[1]);
  return took;
}

/// The store as the killed workstations left it, many times over, against the same store closed.
void startAfterKill() {
  constexpr int rounds = 15;
  const char* const files[] = {"BDD.mdb", "BDD.mdb-wal"};
  const double log = logMegabytes();
  for (const char* file : files)
    if (fs::exists(file))
      fs::copy_file(file, std::string(file) + ".killed", fs::copy_options::overwrite_existing);
  std::vector<double> killed, clean;
  for (int round = 0; round < rounds; ++round) {
    fs::remove("BDD.mdb-shm");
    for (const char* file : files)
      if (fs::exists(std::string(file) + ".killed"))
        fs::copy_file(std::string(file) + ".killed", file, fs::copy_options::overwrite_existing);
    killed.push_back(start());
    clean.push_back(start());
  }
  const double after = percentile(killed, 0.5), otherwise = percentile(clean, 0.5);
  std::printf("start %.2f ms after a kill with %.2f MB of log, %.2f ms after a clean end\n", after, log,
              otherwise);
  judge("start after a kill / a clean one", after / otherwise, 1.2);
}

void work(const Options& options) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  std::vector<pid_t> stations;
  for (int number = 0; number < options.stations; ++number) {
    const pid_t child = ::fork();
    if (child == 0) {
      ::close(ends[0]);
      try {
        Station station(options, number, ends[1]);
        station.work();
        for (;;) ::pause();  // until it is killed
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "station %d: %s\n", number, failure.what());
        ::_exit(1);
      }
    }
    stations.push_back(child);
  }
  ::close(ends[1]);
  std::printf("%8s %7s %9s %9s %9s %9s %9s %8s %12s %12s %8s\n", "station", "orders", "p50 ms", "p99 ms",
              "worst", "CPU ms", "tap ms", "log MB", "after quiet", "connections", "RSS MB");
  std::vector<Block> blocks;
  char bytes[sizeof(Block)];
  while (::read(ends[0], bytes, sizeof bytes) == ssize_t(sizeof bytes)) {
    Block& block = blocks.emplace_back();
    std::memcpy(&block, bytes, sizeof bytes);
    std::printf("%8d %7d %9.2f %9.2f %9.2f %9.2f %9.2f %8.2f %12.2f %12d %8.1f\n", block.station,
                block.orders, block.median, block.p99, block.worst, block.cpu, block.tap, block.log,
                block.afterQuiet, block.connections, block.resident);
    std::fflush(stdout);
    if (block.orders == options.orders) break;
  }
  judgeDay(blocks, options);
  for (const pid_t child : stations) ::kill(child, SIGKILL);
  for (const pid_t child : stations) ::waitpid(child, nullptr, 0);
  startAfterKill();
}

}  // namespace

int main(int count, char** arguments) try {
  const Options options = read(count, arguments);
  const tavoline::bench::Scene scene(options.folder, options.history);
  scene.enter();
  work(options);
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return EXIT_FAILURE;
}
