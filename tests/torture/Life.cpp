#include "torture/Life.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "data/store/Store.h"
#include "tools/store/Check.h"

namespace tavoline::test {
namespace {

using Clock = std::chrono::steady_clock;

template <class T>
const T& oneOf(Chance& chance, const std::vector<T>& all) {
  return all[static_cast<std::size_t>(upTo(chance, static_cast<int>(all.size()) - 1))];
}

/// Reads what comes through the pipe until `until`, and then what it still has; or until `enough` writes were
/// acknowledged.
void follow(int pipe, JournalReader& journal, std::size_t enough, Clock::time_point until) {
  while (journal.acknowledged.size() < enough) {
    pollfd events{pipe, POLLIN, 0};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    if (::poll(&events, 1, std::max(0, static_cast<int>(left.count()))) <= 0) {
      if (Clock::now() >= until) return;
      continue;
    }
    char bytes[4096];
    const ssize_t count = ::read(pipe, bytes, sizeof bytes);
    if (count <= 0) return;
    journal.take({bytes, static_cast<std::size_t>(count)});
  }
}

constexpr std::size_t kWithoutEnd = static_cast<std::size_t>(-1);

}  // namespace

int setting(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value ? std::atoi(value) : otherwise;
}

int upTo(Chance& chance, int most) {
  return std::uniform_int_distribution(0, most)(chance);
}

Station::Station(int pipe, Chance& chance)
    : dm_(std::make_shared<Journal>(Store::open(TDM::ConnectionString), pipe)), chance_(chance) {}

void Station::serveSomebody() {
  if (waiter_.takeTable(oneOf(chance_, menu_.tables))) serve();
  dm_.GestureDone();
  if (upTo(chance_, 2) == 0) dm_.Idle();
}

void Station::beginAnew() {
  // A gesture that was cut short leaves its filters, and what it did not post.
  for (Dataset* rows :
       {&dm_.Table_, &dm_.commande, &dm_.relation_commande, &dm_.relation_commande1, &dm_.sum_commande}) {
    rows->Close();
    rows->Filtered(false);
  }
  for (dm_.Table_.Reopen(), dm_.Table_.First(); !dm_.Table_.Eof(); dm_.Table_.Next()) {
    if (dm_.Table_["control"].text() == "open") continue;
    dm_.Table_.Edit();
    dm_.Table_["control"] = "open";
    dm_.Table_.Post();
  }
}

void Station::serve() {
  for (int gestures = upTo(chance_, 7); gestures > 0; --gestures) {
    dm_.GestureDone();
    upTo(chance_, 4) == 0 ? waiter_.removeLine() : void(waiter_.tap(oneOf(chance_, menu_.articles)));
  }
  if (!waiter_.hasLines()) return waiter_.leave();
  upTo(chance_, 2) == 0 ? waiter_.save() : waiter_.closeTable();
}

void work(int pipe, Chance& chance) {
  Station station(pipe, chance);
  station.logIn();
  for (;;) station.serveSomebody();
}

Life::Life(void (*work)(int, Chance&), Chance& chance) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  Chance itsOwn(static_cast<unsigned>(chance()));
  pipe_ = ends[0];
  child_ = ::fork();
  if (child_ == 0) {
    ::close(ends[0]);
    try {
      work(ends[1], itsOwn);
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "the workstation failed: %s\n", failure.what());
    }
    ::_exit(1);
  }
  ::close(ends[1]);
}

Life::~Life() {
  if (child_ != 0) {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  ::close(pipe_);
}

void Life::live(JournalReader& journal, Chance& chance) {
  follow(pipe_, journal, 1 + static_cast<std::size_t>(upTo(chance, 59)),
         Clock::now() + std::chrono::seconds(30));
  follow(pipe_, journal, kWithoutEnd, Clock::now() + std::chrono::microseconds(upTo(chance, 4000)));
}

void Life::kill(JournalReader& journal) {
  ::kill(child_, SIGKILL);
  int status = 0;
  ::waitpid(std::exchange(child_, 0), &status, 0);
  follow(pipe_, journal, kWithoutEnd, Clock::now() + std::chrono::seconds(5));
  EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
}

bool Life::stopped(JournalReader& journal) {
  int status = 0;
  while (::waitpid(child_, &status, WUNTRACED | WNOHANG) == 0)
    follow(pipe_, journal, kWithoutEnd, Clock::now() + std::chrono::milliseconds(5));
  follow(pipe_, journal, kWithoutEnd, Clock::now() + std::chrono::milliseconds(5));
  if (!WIFSTOPPED(status)) child_ = 0;
  return WIFSTOPPED(status);
}

void Life::goOn() {
  ::kill(child_, SIGCONT);
}

JournalReader lifeAndDeath(void (*work)(int, Chance&), Chance& chance) {
  JournalReader journal;
  Life life(work, chance);
  life.live(journal, chance);
  life.kill(journal);
  return journal;
}

std::vector<std::string> damage(const std::string& store) {
  std::vector<std::string> findings = tool::checkStore(store);
  std::erase_if(findings, [](const std::string& finding) {
    return finding.starts_with("Commandes terminées") ||
           finding.starts_with("Tables occupées sans commande en cours");
  });
  return findings;
}

}  // namespace tavoline::test
