// Workstations as processes: one that is killed, and two on one store. Each process makes an application of
// its own, as an application with its threads does not survive a fork.

#include "sales/Life.h"
#include "support/Killing.h"
#include "support/StoreProcess.h"

namespace tavoline {
namespace {

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

void firstWorkstation(Turns& turns) {
  Life life;
  life.play(kOrder + "tap Café");
  endTurn(turns);

  EXPECT_EQ(life.play("rows commande n_commande\nshow DBText9"), "1\nDBText9 \"9\"\n")
      << "the other's order is not seen before it is read again";
  EXPECT_THAT(life.play("tap Café\nshow DBText9\nrows commande n_commande"), EndsWith("DBText9 \"7\"\n1\n"))
      << "a tap reads the article again, and its own orders alone";
  life.play("tap Enregistrer\nin commandeF");
  endTurn(turns);

  EXPECT_EQ(life.play("tap T1\nrows commande n_commande"), Held + std::string("1, 2\n"))
      << "a tap on the map reads all again";
  endTurn(turns);

  EXPECT_THAT(life.play("tap T1" + kLines), EndsWith("2 | Café | 100 | 200\n1 | Thé | 80 | 80\n"));
}

void secondWorkstation(const test::Home& home, Turns& turns) {
  Life life(home.store());
  EXPECT_EQ(life.play("tap T1"), Held);
  // The number after the other's, and the stock less what both took.
  EXPECT_THAT(
      life.play("tap T2\nin Commande_avnF\nchoose DBLookupListBox1 1\ntap Café\nshow DBText3 DBText9"),
      EndsWith("DBText3 \"2\" hidden\nDBText9 \"8\"\n"));
  life.play("tap Enregistrer");
  endTurn(turns);

  EXPECT_THAT(life.play("tap commandeF.T1" + kLines), EndsWith("2 | Café | 100 | 200\n"))
      << "left on its table";
  life.play("tap Thé");
  endTurn(turns);

  life.play("tap Enregistrer");
}

TEST(ProcessTest, TwoWorkstationsShareOneStore) {
  const test::Home home;
  test::StoreProcess first([](Turns& turns) { test::withApplication([&] { firstWorkstation(turns); }); });
  test::StoreProcess second(
      [&](Turns& turns) { test::withApplication([&] { secondWorkstation(home, turns); }); });
  first.turn();
  second.turn();
  first.turn();
  second.turn();
  first.turn();
}

}  // namespace
}  // namespace tavoline
