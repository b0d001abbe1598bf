#include "data/store/StoreContract.h"

namespace tavoline::test {

namespace {

using testing::ElementsAre;

TEST_P(StoreContract, ASnapshotStaysWhileOthersWrite) {
  const auto here = kind->open(), there = kind->open();
  const RowId first = addPlace(*here, 1, "Salle");
  addPlace(*here, 2, "Terrasse");

  const auto before = here->snapshot();
  const auto begun = stream(*here, *before, "select * from Endroit");
  ASSERT_TRUE(begun->next());
  here->update("Endroit", first, {{"Endoit", "Bar"}});
  addPlace(*there, 3, "Etage");
  there->erase("Endroit", first + 1);

  EXPECT_EQ(placesIn(*here, *before), "Salle,Terrasse");
  ASSERT_TRUE(begun->next());
  EXPECT_EQ(begun->value(1).text(), "Terrasse");
  EXPECT_EQ(placesIn(*here), "Bar,Etage");
  EXPECT_EQ(placesIn(*there), "Bar,Etage");
}

TEST_P(StoreContract, ASnapshotShowsTheMomentItWasTakenNotOfItsFirstQuestion) {
  const auto here = kind->open(), there = kind->open();
  const auto snapshot = here->snapshot();
  addPlace(*here, 1, "Salle");
  addPlace(*there, 2, "Terrasse");
  EXPECT_EQ(placesIn(*here, *snapshot), "");
}

TEST_P(StoreContract, OneSnapshotIsSharedUntilSomethingIsCommitted) {
  const auto here = kind->open(), there = kind->open();
  const auto first = here->snapshot();
  EXPECT_EQ(here->snapshot(), first);
  const RowId salle = addPlace(*here, 1, "Salle");
  const auto second = here->snapshot();
  EXPECT_NE(second, first);
  EXPECT_EQ(here->snapshot(), second);
  there->erase("Endroit", salle);
  EXPECT_NE(here->snapshot(), second);
}

TEST_P(StoreContract, ASnapshotKnowsWhatChangedSince) {
  const auto here = kind->open(), there = kind->open();
  const RowId salle = addPlace(*here, 1, "Salle");
  const auto taken = here->snapshot();
  EXPECT_TRUE(taken->latest());
  EXPECT_TRUE(taken->unchanged({"Endroit", "client"}));

  here->insert("client", {{"code_client", "C1"}});
  EXPECT_FALSE(taken->latest());
  EXPECT_TRUE(taken->unchanged({"Endroit", "commande"}));
  EXPECT_FALSE(taken->unchanged({"Endroit", "client"}));

  const auto again = here->snapshot();
  here->update("Endroit", salle, {{"Endoit", "Bar"}});
  EXPECT_FALSE(again->unchanged({"endroit"}));
  EXPECT_TRUE(again->unchanged({"client"}));
  const auto third = here->snapshot();
  execute(*here, "update endroit set Endoit='Etage'");
  EXPECT_FALSE(third->unchanged({"Endroit"}));

  const auto last = here->snapshot();
  there->erase("Endroit", salle);
  EXPECT_FALSE(last->latest());
  EXPECT_FALSE(last->unchanged({"client"})) << "what another workstation changed is not known";
  EXPECT_TRUE(here->snapshot()->latest());
}

TEST_P(StoreContract, AWriteThatFailsOrFindsNoRowIsNoChange) {
  const auto store = kind->open();
  addPlace(*store, 1, "Salle");
  const auto snapshot = store->snapshot();
  refusalOf([&] { addPlace(*store, 1, "Bar"); });
  refusalOf([&] { store->erase("Endroit", 99); });
  EXPECT_EQ(store->snapshot(), snapshot);
}

TEST_P(StoreContract, AnUnusedMomentChangesNothingThatIsHeld) {
  const auto here = kind->open(), there = kind->open();
  addPlace(*here, 1, "Salle");
  const auto before = here->snapshot();
  const auto begun = stream(*here, *before, "select * from Endroit");
  addPlace(*there, 2, "Terrasse");
  const auto now = here->snapshot();
  for (int i = 0; i < 3; ++i) {
    here->idle();
    there->idle();
    addPlace(*there, 10 + i, "plus tard");
  }
  EXPECT_EQ(placesIn(*here, *before), "Salle");
  EXPECT_EQ(placesIn(*here, *now), "Salle,Terrasse");
  EXPECT_TRUE(begun->next());
  EXPECT_FALSE(begun->next());
}

TEST_P(StoreContract, TwoStreamsOfOneStatementGoTheirOwnWays) {
  const auto store = kind->open();
  for (int i = 1; i <= 3; ++i) addPlace(*store, i, "p" + std::to_string(i));
  const auto snapshot = store->snapshot();
  const auto a = stream(*store, *snapshot, "select * from Endroit");
  ASSERT_TRUE(a->next());
  ASSERT_TRUE(a->next());
  const auto b = stream(*store, *snapshot, "select * from Endroit");
  ASSERT_TRUE(b->next());
  EXPECT_EQ(b->value(1).text(), "p1");
  ASSERT_TRUE(a->next());
  EXPECT_EQ(a->value(1).text(), "p3");
  EXPECT_FALSE(a->next());
  EXPECT_FALSE(a->next()) << "an ended stream does not begin again";
  ASSERT_TRUE(b->next());
  EXPECT_EQ(b->value(1).text(), "p2");
}

TEST_P(StoreContract, RowsOutliveTheirSnapshotAndTheStore) {
  auto store = kind->open();
  addPlace(*store, 1, "Salle");
  addPlace(*store, 2, "Terrasse");
  auto snapshot = store->snapshot();
  const auto rows = stream(*store, *snapshot, "select * from Endroit");
  ASSERT_TRUE(rows->next());
  snapshot.reset();
  addPlace(*store, 3, "Etage");
  EXPECT_EQ(placesIn(*store), "Salle,Terrasse,Etage");
  store.reset();
  ASSERT_TRUE(rows->next());
  EXPECT_EQ(rows->value(1).text(), "Terrasse");
  EXPECT_FALSE(rows->next());
}

TEST_P(StoreContract, ManyVersionsAreHeldAtOnce) {
  const auto store = kind->open();
  std::vector<std::shared_ptr<const Snapshot>> versions;
  for (int i = 0; i < 12; ++i) {
    versions.push_back(store->snapshot());
    addPlace(*store, i, "x");
    if (i % 4 == 0) store->idle();
  }
  for (std::size_t i = 0; i < versions.size(); ++i)
    EXPECT_EQ(read(*store, *versions[i], "select * from Endroit").size(), i);
}

TEST_P(StoreContract, RowNumbersFollowInsertionAndNeverComeBack) {
  const auto store = kind->open();
  const RowId a = addPlace(*store, 7, "a"), b = addPlace(*store, 3, "b");
  EXPECT_LT(a, b);
  store->erase("Endroit", b);
  const auto reopened = kind->open();
  EXPECT_GT(addPlace(*reopened, 5, "c"), b);
  EXPECT_EQ(placesIn(*store), "a,c");
}

TEST_P(StoreContract, AnUpdateTouchesItsRowAndFieldsOnly) {
  const auto store = kind->open();
  const RowId one = store->insert("caisse", {{"ID_caise", "C001"}, {"nom_caisse", "Bar"}, {"solde", 10.5}});
  store->insert("caisse", {{"ID_caise", "C002"}, {"nom_caisse", "Salle"}, {"solde", 1.0}});
  store->update("CAISSE", one, {{"SOLDE", 12.25}});
  store->update("caisse", one, {});
  EXPECT_THAT(
      read(*store, "select ID_caise, nom_caisse, solde, general from caisse"),
      ElementsAre(ElementsAre("C001", "Bar", 12.25, Value()), ElementsAre("C002", "Salle", 1.0, Value())));
}

TEST_P(StoreContract, AnActionWritesEveryRowItMeets) {
  const auto store = kind->open();
  for (const char* control : {"close", "open", "close"})
    store->insert("Table_", {{"table", "T"}, {"control", control}, {"ID_table", Value()}});
  execute(*store, "update table_ set table_.control='open'");
  EXPECT_THAT(read(*store, "select control from Table_"),
              ElementsAre(ElementsAre("open"), ElementsAre("open"), ElementsAre("open")));
}

}  // namespace

}  // namespace tavoline::test
