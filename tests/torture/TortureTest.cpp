// A workstation is killed at a random moment of random gestures, again and again on the same store; on a disk
// that holds, and on one that fills up and fails. `make torture` does it a thousand times;
// TAVOLINE_TORTURE_RUNS and TAVOLINE_TORTURE_SEED say otherwise.

#include <gmock/gmock.h>
#include <poll.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "data/value/Errors.h"
#include "gestures/Waiter.h"
#include "support/StoreFile.h"
#include "support/StoreVfs.h"
#include "tools/store/Check.h"
#include "tools/store/demo/Demo.h"
#include "torture/Journal.h"
#include "torture/Verdict.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using Clock = std::chrono::steady_clock;

int setting(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value ? std::atoi(value) : otherwise;
}

/// A store in a passing folder that is the working directory.
class Cafe {
 public:
  Cafe() {
    fs::current_path(folder_.path());
    tool::createGenerated("BDD.mdb", {.orders = 200, .seed = 1, .pictures = false});
  }
  ~Cafe() { fs::current_path(before_); }
  Cafe(const Cafe&) = delete;
  Cafe& operator=(const Cafe&) = delete;

 private:
  fs::path before_ = fs::current_path();
  TemporaryFolder folder_;
};

using Chance = std::mt19937;

int upTo(Chance& chance, int most) {
  return std::uniform_int_distribution(0, most)(chance);
}

template <class T>
const T& oneOf(Chance& chance, const std::vector<T>& all) {
  return all[static_cast<std::size_t>(upTo(chance, static_cast<int>(all.size()) - 1))];
}

/// A workstation at random gestures.
class Workstation {
 public:
  Workstation(int pipe, Chance& chance)
      : dm_(std::make_shared<Journal>(Store::open(TDM::ConnectionString), pipe)), chance_(chance) {}

  void serveSomebody() {
    if (waiter_.takeTable(oneOf(chance_, menu_.tables))) serve();
    dm_.GestureDone();
    if (upTo(chance_, 2) == 0) dm_.Idle();
  }
  void logIn() { waiter_.logIn(); }

  /// Sets free what was held by a dead predecessor, or by a gesture that failed: "Actualiser".
  void openTables() {
    for (dm_.Table_.Reopen(), dm_.Table_.First(); !dm_.Table_.Eof(); dm_.Table_.Next()) {
      if (dm_.Table_["control"].text() == "open") continue;
      dm_.Table_.Edit();
      dm_.Table_["control"] = "open";
      dm_.Table_.Post();
    }
  }

 private:
  void serve() {
    for (int gestures = upTo(chance_, 7); gestures > 0; --gestures) {
      dm_.GestureDone();
      upTo(chance_, 4) == 0 ? waiter_.removeLine() : void(waiter_.tap(oneOf(chance_, menu_.articles)));
    }
    if (!waiter_.hasLines()) return waiter_.leave();
    upTo(chance_, 2) == 0 ? waiter_.save() : waiter_.closeTable();
  }

  TDM dm_;
  Menu menu_ = (openTables(), Menu::of(dm_));
  Waiter waiter_{dm_, menu_};
  Chance& chance_;
};

/// A workstation's life, until it is killed.
[[noreturn]] void work(int pipe, Chance& chance) {
  Workstation station(pipe, chance);
  station.logIn();
  for (;;) station.serveSomebody();
}

/// What may happen to a disk: it is full, or it fails, at once or after some writes more, or when it is to
/// keep.
void spoil(StoreVfs& disk, Chance& chance) {
  const int kind = upTo(chance, 2);
  if (kind == 2) return disk.failSyncs(SQLITE_IOERR_FSYNC);
  disk.failWrites(kind == 0 ? SQLITE_FULL : SQLITE_IOERR_WRITE, upTo(chance, 12));
}

/// The same on a disk that fails now and then, for one gesture or for several, and gets well again. A gesture
/// upon one that was cut short may find empty what it computes with, and end in its turn.
[[noreturn]] void workOnABadDisk(int pipe, Chance& chance) {
  StoreVfs disk;
  Workstation station(pipe, chance);
  for (;;) {
    if (upTo(chance, 2) == 0) spoil(disk, chance);
    try {
      station.logIn();
      station.serveSomebody();
      continue;
    } catch (const StoreError&) {
      if (upTo(chance, 1) == 0) continue;
    } catch (const Error&) {  // it stands upon one that was cut short, and finds empty what it needs
    }
    disk.heal();
    station.openTables();
  }
}

/// Reads what the pipe has until `until`, or until `enough` writes were acknowledged.
void follow(int pipe, JournalReader& journal, std::size_t enough, Clock::time_point until) {
  while (journal.acknowledged.size() < enough && Clock::now() < until) {
    pollfd events{pipe, POLLIN, 0};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    if (::poll(&events, 1, static_cast<int>(left.count())) <= 0) continue;
    char bytes[4096];
    const ssize_t count = ::read(pipe, bytes, sizeof bytes);
    if (count <= 0) return;
    journal.take({bytes, static_cast<std::size_t>(count)});
  }
}

constexpr std::size_t kWithoutEnd = static_cast<std::size_t>(-1);

/// Lets a workstation work for a random while and kills it. What it told before it died.
JournalReader lifeAndDeath(void (*work)(int, Chance&), Chance& chance) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  Chance itsOwn(static_cast<unsigned>(chance()));
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[0]);
    try {
      work(ends[1], itsOwn);
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "the workstation failed: %s\n", failure.what());
    }
    ::_exit(1);
  }
  ::close(ends[1]);
  JournalReader journal;
  follow(ends[0], journal, static_cast<std::size_t>(upTo(chance, 60)),
         Clock::now() + std::chrono::seconds(30));
  follow(ends[0], journal, kWithoutEnd, Clock::now() + std::chrono::microseconds(upTo(chance, 4000)));
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  follow(ends[0], journal, kWithoutEnd, Clock::now() + std::chrono::seconds(5));
  ::close(ends[0]);
  EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
  return journal;
}

/// What the check says of the store, less what a closing cut short leaves behind by design: it is a series of
/// writes and no transaction, so that an order can be finished without its total, on a table that is not free
/// yet.
std::vector<std::string> damage() {
  std::vector<std::string> findings = tool::checkStore("BDD.mdb");
  std::erase_if(findings, [](const std::string& finding) {
    return finding.starts_with("Commandes terminées") ||
           finding.starts_with("Tables occupées sans commande en cours");
  });
  return findings;
}

struct Sum {
  int deaths = 0;
  std::size_t inFlight = 0, acknowledged = 0, refused = 0, afterwards = 0;
};

Sum torture(void (*work)(int, Chance&)) {
  const Cafe cafe;
  const int runs = setting("TAVOLINE_TORTURE_RUNS", 25);
  const int seed = setting("TAVOLINE_TORTURE_SEED", 1);
  Chance chance(static_cast<unsigned>(seed));
  Witness witness("BDD.mdb");
  Sum sum;
  while (sum.deaths < runs && !testing::Test::HasFailure()) {
    SCOPED_TRACE("run " + std::to_string(sum.deaths) + " of seed " + std::to_string(seed));
    const JournalReader journal = lifeAndDeath(work, chance);
    EXPECT_THAT(witness.verdict(journal), IsEmpty());
    EXPECT_THAT(damage(), IsEmpty());
    ++sum.deaths;
    sum.acknowledged += journal.acknowledged.size();
    sum.refused += journal.refused;
    sum.afterwards += journal.afterwards;
    if (journal.diedWriting()) ++sum.inFlight;
  }
  return sum;
}

TEST(Torture, AKilledWorkstationLosesNothingThatWasAcknowledged) {
  const Sum sum = torture(work);
  EXPECT_GT(sum.acknowledged, 0U);
  std::printf("%d deaths, %zu of them in the middle of a write; %zu acknowledged writes found again\n",
              sum.deaths, sum.inFlight, sum.acknowledged);
}

TEST(Torture, AFailingDiskRefusesWholeWritesAndLosesNoneBefore) {
  const Sum sum = torture(workOnABadDisk);
  EXPECT_GT(sum.refused, 0U);
  EXPECT_GT(sum.afterwards, 0U) << "nothing was written any more once the disk was well";
  std::printf(
      "%d deaths; %zu writes refused; %zu acknowledged ones found again, %zu of them straight behind\n",
      sum.deaths, sum.refused, sum.acknowledged, sum.afterwards);
}

// The judge himself: what a lost, a halved or a foreign write looks like to him.
TEST(Torture, TheVerdictSeesWhatIsWrong) {
  const std::string first = "UPDATE caisse SET solde = -1, nom_caisse = 'A' WHERE rid = 1",
                    second = "UPDATE caisse SET solde = -2 WHERE rid = 1",
                    half = "UPDATE caisse SET solde = -1 WHERE rid = 1",
                    extra = "INSERT INTO caisse (nom_caisse) VALUES ('Bar')",
                    erased = "DELETE FROM caisse WHERE rid = 1";
  const struct {
    const char* what;
    std::vector<std::string> done, acknowledged, uncertain;
    bool well;
  } cases[] = {
      {"nothing", {}, {}, {}, true},
      {"all that was acknowledged", {first, extra}, {first, extra}, {}, true},
      {"an update that never arrived", {}, {first}, {}, false},
      {"an insert that never arrived", {}, {extra}, {}, false},
      {"a deletion that never arrived", {}, {erased}, {}, false},
      {"an update under way, not done", {}, {}, {second}, true},
      {"an update under way, done", {second}, {}, {second}, true},
      {"an update under way, half done", {half}, {}, {first}, false},
      {"neither before nor after", {}, {first}, {second}, false},
      {"an insert under way, not done", {}, {}, {extra}, true},
      {"one of those that were refused", {second}, {}, {extra, second}, true},
      {"two of those that were refused", {second, extra}, {}, {extra, second}, false},
      {"a row that nobody wrote", {extra}, {}, {}, false},
      {"a field that nobody wrote", {second}, {}, {}, false},
  };
  for (const auto& [what, done, acknowledged, uncertain, well] : cases) {
    const Cafe cafe;
    Witness witness("BDD.mdb");
    for (const std::string& write : done) sideDoor("BDD.mdb").execute(write);
    JournalReader journal;
    journal.acknowledged = acknowledged;
    journal.uncertain = uncertain;
    EXPECT_EQ(witness.verdict(journal).empty(), well) << what;
  }
}

}  // namespace
}  // namespace tavoline::test
