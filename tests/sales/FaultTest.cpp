// What the screens do when one of their writes is refused.

#include <sqlite3.h>

#include "sales/Life.h"
#include "support/StoreVfs.h"

namespace tavoline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

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
      {"locked", [](test::StoreVfs&, Life& life) { life.store("begin immediate"); },
       [](test::StoreVfs&, Life& life) { life.store("rollback"); }, "occupé par un autre poste"},
  };
  for (const Gesture& gesture : Gestures)
    for (int n = 1; n <= gesture.writes; ++n)
      for (const Fault& fault : faults) {
        SCOPED_TRACE(std::string(gesture.name) + ", write " + std::to_string(n) + ", " + fault.name);
        test::StoreVfs disk;
        disk.skipWaiting();
        Life life;
        (life.*gesture.before)();
        const std::size_t before = life.writes().size();
        std::string contents;
        life.atWrite(n, [&] {
          contents = life.contents();
          fault.strike(disk, life);
        });
        (life.*gesture.run)();
        EXPECT_THAT(life.said(), ElementsAre(HasSubstr(fault.says)));
        EXPECT_EQ(life.writes().size(), before + std::size_t(n) - 1) << "it went on after the refusal";
        EXPECT_EQ(life.contents(), contents) << "the earlier posts stay, and nothing is added";
        fault.heal(disk, life);
        (life.*gesture.again)(n);
      }
}

}  // namespace
}  // namespace tavoline
