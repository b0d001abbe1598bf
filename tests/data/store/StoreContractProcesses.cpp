#include <sys/wait.h>

#include <csignal>

#include "data/store/StoreContract.h"
#include "support/StoreFaults.h"
#include "support/StoreProcess.h"

namespace tavoline::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_P(StoreContract, TwoProcessesSeeEachOthersCommitsInNewerSnapshotsOnly) {
  StoreProcess other([&](StoreProcess::Turns& turns) {
    const auto there = kind->open();
    for (int i = 1; turns.next(); ++i) {
      const std::string seen = placesIn(*there);
      addPlace(*there, i, "[" + seen + "]");
    }
  });
  const auto here = kind->open();
  addPlace(*here, 100, "a");
  const auto before = here->snapshot();
  other.turn();
  EXPECT_FALSE(before->latest());
  EXPECT_FALSE(before->unchanged({"client"}));
  EXPECT_EQ(placesIn(*here, *before), "a");
  const auto after = here->snapshot();
  EXPECT_EQ(placesIn(*here, *after), "a,[a]");
  EXPECT_TRUE(after->latest());
  addPlace(*here, 101, "b");
  other.turn();
  EXPECT_EQ(placesIn(*here), "a,[a],b,[a,[a],b]");
  EXPECT_EQ(placesIn(*here, *after), "a,[a]");
}

TEST_P(StoreContract, AStoreHeldByAnotherProcessIsBusyAndThenWorksAgain) {
  StoreProcess other([&](StoreProcess::Turns& turns) {
    turns.next();
    kind->hold("Endroit");
    turns.next();
    kind->release();
    turns.next();
  });
  const auto store = kind->open();
  addPlace(*store, 1, "Salle");
  const auto held = store->snapshot();
  other.turn();
  EXPECT_THAT(refusalOf([&] { addPlace(*store, 2, "Terrasse"); }), HasSubstr("occupé"));
  EXPECT_EQ(placesIn(*store), "Salle") << "reading goes on beside a writer";
  store->idle();
  other.turn();
  addPlace(*store, 2, "Terrasse");
  EXPECT_EQ(placesIn(*store), "Salle,Terrasse");
  EXPECT_EQ(placesIn(*store, *held), "Salle");
}

// The writes of a tap in short: a line, the stock, the order's total.
void tap(Store& store, int number) {
  const RowId line = store.insert("relation_commande", {{"n_commande", number}, {"qte", 1}, {"total", 80.0}});
  store.update("relation_commande", line, {{"qte", 2}});
  execute(store, "update article set qte_stock = 7 where code_barre = '1'");
  store.erase("relation_commande", line);
}

TEST_P(StoreContract, AProcessKilledBetweenTwoWritesLeavesExactlyTheEarlierOnes) {
  using Fault = StoreFaults::Fault;
  // What the line's quantity and the stock are, per number of writes that were done; -1 for no line.
  const std::pair<int, int> expected[] = {{-1, 9}, {1, 9}, {2, 9}, {2, 7}, {-1, 7}};
  for (int done = 0; done <= 4; ++done) {
    for (const Fault fault : {Fault::DieBefore, Fault::DieAfter}) {
      const int write = fault == Fault::DieBefore ? done + 1 : done;
      if (write < 1 || write > 4) continue;
      SCOPED_TRACE((fault == Fault::DieBefore ? "killed before write " : "killed after write ") +
                   std::to_string(write));
      const auto fresh = GetParam().make();
      const int status = runElsewhere([&] {
        StoreFaults faulty(fresh->open());
        faulty.insert("article", {{"code_barre", "1"}, {"qte_stock", 9}});
        faulty.at(write, fault);
        tap(faulty, 1);
      });
      ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);

      const auto store = fresh->open();
      const Table lines = read(*store, "select qte from relation_commande");
      const auto [quantity, stock] = expected[done];
      ASSERT_EQ(lines.size(), quantity < 0 ? 0u : 1u);
      if (quantity >= 0) {
        EXPECT_EQ(lines[0][0], Value(quantity));
      }
      EXPECT_THAT(read(*store, "select qte_stock from article"), ElementsAre(ElementsAre(stock)));
      tap(*store, 2);
    }
  }
}

}  // namespace

}  // namespace tavoline::test
