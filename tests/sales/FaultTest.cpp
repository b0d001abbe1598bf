// What the screens do when one of their writes is refused.

#include <sqlite3.h>

#include <sstream>

#include "sales/Commande_avnU.h"
#include "sales/Life.h"
#include "support/StoreVfs.h"

namespace tavoline {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

int writesIn(const std::string& said) {
  int count = 0;
  std::istringstream lines(said);
  for (std::string line; std::getline(lines, line);) count += line[1] == ' ';
  return count;
}

/// What the store holds where the gesture was made once, and nothing was refused.
std::string once(const Gesture& gesture) {
  Life life;
  life.play(gesture.before);
  life.play(gesture.run + (gesture.finish.empty() ? "" : "\n" + gesture.finish));
  if (gesture.again.find(gesture.run) == std::string::npos) life.play(gesture.again);
  return life.contents();
}

TEST(FaultTest, ARefusedWriteStopsTheHandlerThereAndTheNextTapWorks) {
  struct Fault {
    const char* name;
    void (*strike)(test::StoreVfs&, Life&);
    void (*heal)(test::StoreVfs&, Life&);
    const char* says;
  };
  const auto healDisk = [](test::StoreVfs& disk, Life&) { disk.heal(); };
  const Fault faults[] = {
      {"full", [](test::StoreVfs& disk, Life&) { disk.failWrites(SQLITE_FULL); }, healDisk, "plein"},
      {"broken", [](test::StoreVfs& disk, Life&) { disk.failWrites(SQLITE_IOERR_WRITE); }, healDisk,
       "n'a pas pu lire ou écrire"},
      {"read-only", [](test::StoreVfs& disk, Life&) { disk.failWrites(SQLITE_READONLY); }, healDisk,
       "protégé contre l'écriture"},
      {"locked", [](test::StoreVfs&, Life& life) { life.at.sql("begin immediate"); },
       [](test::StoreVfs&, Life& life) { life.at.sql("rollback"); }, "occupé par un autre poste"},
  };
  std::size_t turn = 0;
  for (const Gesture& gesture : Gestures) {
    const std::string whole = once(gesture);
    for (int n = 1; n <= gesture.writes; ++n) {
      const Fault& fault = faults[turn++ % std::size(faults)];
      SCOPED_TRACE(std::string(gesture.name) + ", write " + std::to_string(n) + ", " + fault.name);
      test::StoreVfs disk;
      disk.skipWaiting();
      Life life;
      life.play(gesture.before);
      std::string contents;
      life.atWrite(n, [&] {
        contents = life.contents();
        fault.strike(disk, life);
      });
      const std::string said = life.play(gesture.run);
      EXPECT_THAT(said, HasSubstr(fault.says));
      EXPECT_EQ(writesIn(said), n - 1) << "it went on after the refusal";
      EXPECT_EQ(life.contents(), contents) << "the earlier posts stay, and nothing is added";
      fault.heal(disk, life);
      if (!Commande_avnF->Visible()) life.play("tap commandeF.T1");
      EXPECT_THAT(life.play(gesture.again), EndsWith(gesture.seen));
      EXPECT_EQ(life.contents(), whole) << "what was repeated is done, and nothing of it twice";
    }
  }
}

}  // namespace
}  // namespace tavoline
