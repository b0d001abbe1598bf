// A workstation is killed at a random moment of random gestures, again and again on the same store; on a disk
// that holds, and on one that fills up and fails. `make torture` does it a thousand times;
// TAVOLINE_TORTURE_RUNS and TAVOLINE_TORTURE_SEED say otherwise.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <filesystem>

#include "data/value/Errors.h"
#include "support/StoreFile.h"
#include "support/StoreVfs.h"
#include "tools/store/demo/Demo.h"
#include "torture/Life.h"
#include "torture/Verdict.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

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
  Station station(pipe, chance);
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
    station.beginAnew();
  }
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
    EXPECT_THAT(damage("BDD.mdb"), IsEmpty());
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
