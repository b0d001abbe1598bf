// Workstations as processes: one that is killed, and two on one store. Each process makes an application of
// its own, as an application with its threads does not survive a fork.

#include <fstream>
#include <functional>

#include "data/store/postgres/Connection.h"
#include "sales/Life.h"
#include "support/Cluster.h"
#include "support/Killing.h"
#include "support/StoreProcess.h"
#include "tools/store/Copy.h"
#include "tools/store/Creation.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using Turns = test::StoreProcess::Turns;

const char Held[] = "says \"cette table est reserver par un autre utilisateur , merci de pationter\"\n";

/// In another process: its failures end it, so that the test is told.
void endTurn(Turns& turns) {
  if (::testing::Test::HasFailure()) throw std::runtime_error("an expectation failed");
  turns.next();
}

TEST(ProcessTest, AKilledProgramLeavesExactlyItsEarlierWrites) {
  for (const Gesture& gesture : Gestures)
    test::killBetweenWrites(
        {gesture.name, gesture.writes, kFreshMap + gesture.before, gesture.run, gesture.finish, Contents});
}

void firstWorkstation(Life& life, Turns& turns) {
  life.play(kOrder + "tap Café");
  endTurn(turns);

  EXPECT_EQ(life.play("rows commande n_commande\nshow DBText9"), "1\n\"9\"\n")
      << "the other's order is not seen before it is read again";
  EXPECT_THAT(life.play("tap Café\nshow DBText9\nrows commande n_commande"), EndsWith("\n\"7\"\n1\n"))
      << "a tap reads the article again, and its own orders alone";
  life.play("tap Enregistrer\nin commandeF");
  endTurn(turns);

  EXPECT_EQ(life.play("tap T1\nrows commande n_commande"), Held + std::string("1, 2\n"))
      << "a tap on the map reads all again";
  endTurn(turns);

  EXPECT_THAT(life.play("tap T1" + kLines), EndsWith("2 | Café | 100 | 200\n1 | Thé | 80 | 80\n"));
}

void secondWorkstation(Life& life, Turns& turns) {
  EXPECT_EQ(life.play("tap T1"), Held);
  // The number after the other's, and the stock less what both took.
  EXPECT_THAT(
      life.play("tap T2\nin Commande_avnF\nchoose DBLookupListBox1 1\ntap Café\nshow DBText3 DBText9"),
      EndsWith("\n\"2\" hidden, \"8\"\n"));
  life.play("tap Enregistrer");
  endTurn(turns);

  EXPECT_THAT(life.play("tap commandeF.T1" + kLines), EndsWith("2 | Café | 100 | 200\n"))
      << "left on its table";
  life.play("tap Thé");
  endTurn(turns);

  life.play("tap Enregistrer");
}

/// Each workstation is made where it works; empty for a store of the first one's own.
void shareOneStore(const std::function<fs::path(int workstation)>& folder) {
  const auto made = [&](int workstation) {
    const fs::path where = folder(workstation);
    return where.empty() ? std::make_unique<Life>() : std::make_unique<Life>(where);
  };
  test::StoreProcess first(
      [&](Turns& turns) { test::withApplication([&] { firstWorkstation(*made(1), turns); }); });
  test::StoreProcess second(
      [&](Turns& turns) { test::withApplication([&] { secondWorkstation(*made(2), turns); }); });
  first.turn();
  second.turn();
  first.turn();
  second.turn();
  first.turn();
}

TEST(ProcessTest, TwoWorkstationsShareOneStore) {
  const test::Home home;
  shareOneStore([&](int workstation) { return workstation == 1 ? fs::path() : fs::path(home.store()); });
}

/// The small cafeteria in a database of a server, and two folders that lead to it.
class ServedCafe {
 public:
  ServedCafe() {
    const std::string file = folder_.path() / "cafe.mdb";
    tool::createStore(file);
    std::ifstream rows(TAVOLINE_FOLDER "cafeteria.sql");
    test::sideDoor(file).execute({std::istreambuf_iterator<char>(rows), {}});
    const std::string address = cluster_.address("cafe");
    tool::copyAcross(file, address);
    for (const int workstation : {1, 2}) {
      fs::create_directory(at(workstation));
      std::ofstream(at(workstation) / "BDD.mdb")
          << tool::workstationLine(postgres::parseAddress(address, address)) << '\n';
    }
  }
  fs::path at(int workstation) const { return folder_.path() / std::to_string(workstation); }
  test::Cluster& server() { return cluster_; }

 private:
  test::Cluster cluster_;
  test::TemporaryFolder folder_;
};

TEST(ProcessTest, TwoWorkstationsShareOneServer) {
  const ServedCafe cafe;
  shareOneStore([&](int workstation) { return cafe.at(workstation); });
}

// What is acknowledged is there, what is not is told, and the next gesture after the server's return goes on.
TEST(ProcessTest, AWorkstationOutlivesItsServer) {
  ServedCafe cafe;
  test::StoreProcess workstation([&](Turns& turns) {
    test::withApplication([&] {
      Life life(cafe.at(1));
      life.play(kOrder + "tap Café");
      endTurn(turns);
      EXPECT_THAT(life.play("tap Café"), ::testing::HasSubstr("ne répond pas"));
      endTurn(turns);
      EXPECT_THAT(life.play("tap Café" + kLines), EndsWith("2 | Café | 100 | 200\n"));
    });
  });
  cafe.server().crash();
  workstation.turn();
  cafe.server().start();
  workstation.turn();
}

// Three refreshes at once, four filters, two writes and three reopenings at once: a reading asks for its
// version, and then for its rows.
TEST(ProcessTest, ATapCostsAFewRoundTrips) {
  const ServedCafe cafe;
  const auto tapAndCount = [&] {
    Life life(cafe.at(1));
    life.play(kOrder + "tap Café\ntap Café");
    const auto before = postgres::Connection::roundTrips();
    life.play("tap Café");
    EXPECT_LE(postgres::Connection::roundTrips() - before, 14u);
  };
  EXPECT_EQ(test::runElsewhere([&] { test::withApplication(tapAndCount); }), 0);
}

}  // namespace
}  // namespace tavoline
