#include <sqlite3.h>

#include "data/store/StoreContract.h"
#include "support/StoreProcess.h"
#include "support/StoreVfs.h"
#include "tools/store/Sqlite.h"

namespace tavoline::test {

namespace {

using testing::HasSubstr;

TEST(SqliteDisk, AFailingDiskRefusesWritesUntilItIsWell) {
  struct Case {
    const char* what;
    void (*breakDisk)(StoreVfs&);
    const char* says;
  };
  const Case cases[] = {
      {"full at once", [](StoreVfs& disk) { disk.failWrites(SQLITE_FULL); }, "disque est plein"},
      {"full after a write", [](StoreVfs& disk) { disk.failWrites(SQLITE_FULL, 1); }, "disque est plein"},
      {"full in the middle", [](StoreVfs& disk) { disk.failWrites(SQLITE_FULL, 3); }, "disque est plein"},
      {"read-only", [](StoreVfs& disk) { disk.failWrites(SQLITE_READONLY); }, "protégé contre l'écriture"},
      {"broken", [](StoreVfs& disk) { disk.failWrites(SQLITE_IOERR_WRITE); }, "n'a pas pu lire ou écrire"},
      {"unable to sync", [](StoreVfs& disk) { disk.failSyncs(SQLITE_IOERR_FSYNC); },
       "n'a pas pu lire ou écrire"},
  };
  for (const auto& [what, breakDisk, says] : cases) {
    SCOPED_TRACE(what);
    StoreVfs disk;
    const StoreFile file;
    {
      const auto store = file.open();
      const RowId salle = addPlace(*store, 1, "Salle");
      const auto held = store->snapshot();

      breakDisk(disk);
      EXPECT_THAT(refusalOf([&] { addPlace(*store, 2, "Terrasse"); }), HasSubstr(says));
      disk.failWrites(SQLITE_FULL);
      EXPECT_THAT(refusalOf([&] {
                    store->update("Endroit", salle, {{"Endoit", "Bar"}});
                  }),
                  HasSubstr("plein"));
      EXPECT_THAT(refusalOf([&] { execute(*store, "update endroit set Endoit='x'"); }), HasSubstr("plein"));
      store->idle();
      EXPECT_GE(disk.refused(), 3);
      EXPECT_EQ(placesIn(*store), "Salle");
      EXPECT_EQ(placesIn(*store, *held), "Salle");

      disk.heal();
      addPlace(*store, 2, "Etage");
      store->update("Endroit", salle, {{"Endoit", "Bar"}});
      EXPECT_EQ(placesIn(*store), "Bar,Etage");
      EXPECT_EQ(placesIn(*store, *held), "Salle");
    }
    EXPECT_EQ(placesIn(*file.open()), "Bar,Etage");
    EXPECT_EQ(file.run("PRAGMA integrity_check"), "ok");
  }
}

TEST(SqliteDisk, EveryWriteIsForcedToTheDisk) {
  StoreVfs disk;
  const StoreFile file;
  const auto store = file.open();
  const RowId row = addPlace(*store, 1, "Salle");
  const std::function<void()> writes[] = {
      [&] { addPlace(*store, 2, "Bar"); },
      [&] {
        store->update("Endroit", row, {{"Endoit", "x"}});
      },
      [&] { execute(*store, "update endroit set Endoit='y'"); },
      [&] { store->erase("Endroit", row); },
  };
  for (const auto& write : writes) {
    const int before = disk.syncs();
    write();
    EXPECT_GT(disk.syncs(), before);
  }
}

TEST(SqliteDisk, AWriteWaitsForAnotherProcessToFinishItsOwn) {
  const StoreFile file;
  StoreProcess other([&](StoreProcess::Turns& turns) {
    tool::Database writer(file.path().string(), tool::Database::Mode::Create);
    turns.next();
    writer.execute("BEGIN IMMEDIATE");
    turns.next();
    writer.execute("COMMIT");
  });
  StoreVfs disk;
  const auto store = file.open();
  other.turn();
  bool waited = false;
  disk.whenWaiting([&] {
    waited = true;
    other.turn();
  });
  addPlace(*store, 1, "Salle");
  EXPECT_TRUE(waited);
  EXPECT_EQ(placesIn(*store), "Salle");
}

TEST(SqliteDisk, LookingAtTheFileAgainKeepsTheLocksOnIt) {
  const StoreFile file;
  StoreProcess other([&](StoreProcess::Turns& turns) {
    turns.next();
    addPlace(*file.open(), 1, "de l'autre");
    turns.next();
    if (placesIn(*file.open()) != "avant,de l'autre,après") throw std::runtime_error("a row was lost");
  });
  const auto store = file.open();
  addPlace(*store, 2, "avant");
  file.open();
  // Were the other process to believe itself alone, it would take the log away with its close.
  other.turn();
  EXPECT_EQ(placesIn(*store), "avant,de l'autre");
  addPlace(*store, 3, "après");
  EXPECT_NO_THROW(other.turn());
}

TEST(SqliteDisk, TheLogIsFoldedAndBeginsAgainWhileDatasetsStayOpen) {
  const StoreFile file;
  const auto store = file.open();
  std::shared_ptr<const Snapshot> held;
  for (int i = 0; i < 200; ++i) {
    addPlace(*store, i, "Salle");
    held = store->snapshot();
    store->idle();
  }
  EXPECT_LT(std::filesystem::file_size(file.path().string() + "-wal"), 100'000u);
  EXPECT_EQ(read(*store, *held, "select * from Endroit").size(), 200u);
}

}  // namespace

}  // namespace tavoline::test
