#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"
#include "gestures/Waiter.h"
#include "support/StoreCounting.h"
#include "support/StoreFile.h"

namespace tavoline {
namespace {

class DataModule : public DatasetTest {
 protected:
  void execute(const std::string& statements) { test::sideDoor(file->path()).execute(statements); }

  std::uintmax_t log() { return std::filesystem::file_size(file->path().string() + "-wal"); }

  void history(int orders) {
    execute(
        "insert into utilisateur(login, nom, role) values ('1', 'A', 'Admin');"
        "insert into type(code, Type_Produit) values (1, 'BOISSONS');"
        "insert into article(code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto)"
        " values ('1', 'EAU', 1, 50, 40, 'OUI'), ('2', 'THÉ', 1, 50, 30, 'OUI');"
        "insert into Table_(ID_table, \"table\", etat, control, n_commande) values (1, 'T1', 'OFF', 'open', "
        "0);"
        "insert into caisse(ID_caise, general) values ('C001', 'NON');"
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
        std::to_string(orders) +
        ")"
        " insert into commande(n_commande, \"table\", login, etat_commande, en_caisser, date_commande, tcc)"
        " select i, 'T1', '1', 'Terminer', 'no', '2020-01-01 10:00:00.000', 40 from n;"
        "insert into relation_commande(n_commande, code_article, article, qte, prix, total)"
        " select n_commande, '1', 'EAU', 1, 40, 40 from commande;");
  }
};

TEST_F(DataModule, OpensEverythingOnAnEmptyStoreButTheActions) {
  TDM dm(here);
  EXPECT_EQ(dm.Datasets().size(), 61u);
  for (Dataset* dataset : dm.Datasets())
    EXPECT_EQ(dataset->Active(), !dataset->IsAction()) << dataset->Name();
  for (const char* action : {"X", "XX", "XXX", "X_D"}) EXPECT_FALSE(dm.Find(action)->Active());
  EXPECT_EQ(dm.Source("datasourcecommande"), &dm.DataSourceCommande);
  EXPECT_EQ(dm.Source("DataSourceXYZ"), nullptr);
  EXPECT_EQ(dm.Find("Commande"), nullptr);
}

TEST_F(DataModule, AStoreThatLacksSomethingNamesIt) {
  execute("alter table commande drop column client");
  try {
    TDM dm(openStore());
    FAIL() << "opened without a column that it names";
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr("client"));
  }
  EXPECT_EQ(DM, nullptr);
}

TEST_F(DataModule, AQuietMomentLeavesNothingInTheLogWhateverOthersWrote) {
  history(1500);  // more than a dataset keeps in memory
  TDM dm(here);
  const test::Menu menu = test::Menu::of(dm);
  test::Waiter waiter(dm, menu);
  ASSERT_TRUE(waiter.takeTable("T1"));
  waiter.tap("EAU");
  dm.x1.Last();
  dm.x1.ValueAt(0, 0);  // so far from the current row that this one is kept aside
  const std::string order = dm.commande["n_commande"].text(), lines = dm.x1["n_commande"].text();
  const std::size_t orders = dm.commande.RecordCount(), logins = dm.utilisateur.RecordCount();
  for (int number = 9001; number < 9003; ++number) {
    there->insert("commande", {{"n_commande", number}, {"etat_commande", "Terminer"}, {"en_caisser", "no"}});
    there->insert("utilisateur", {{"login", std::to_string(number - 9000) + "x"}});
    there->update("commande", number - 9000, {{"etat_commande", "Encours"}});
    for (int rest = 0; rest < 3; ++rest) dm.Idle();
    EXPECT_EQ(log(), 0u);
  }
  EXPECT_EQ(dm.commande["n_commande"].text(), order);
  EXPECT_EQ(dm.x1["n_commande"].text(), lines);
  EXPECT_EQ(dm.commande.RecordCount(), orders);
  EXPECT_EQ(dm.utilisateur.RecordCount(), logins);
  dm.commande.Reopen();
  EXPECT_EQ(dm.commande.RecordCount(), orders + 2);
}

TEST_F(DataModule, ADayWithoutAQuietMomentKeepsTheLogShort) {
  TDM dm(here);
  std::uintmax_t longest = 0;
  for (int i = 0; i < 500; ++i) {
    dm.Client.Insert();
    dm.Client["code_client"] = std::to_string(i);
    dm.Client.Post();
    if (i % 2 == 0) dm.Client.Reopen();
    dm.GestureDone();
    longest = std::max(longest, log());
  }
  EXPECT_LT(longest, 3u << 20);
}

TEST_F(DataModule, ATapReadsTheRowsOfItsOrderWhateverTheHistory) {
  StoreCounts counts[2];
  const int sizes[2] = {3, 4000};
  for (int i : {0, 1}) {
    TearDown();
    SetUp();
    history(sizes[i]);
    auto store = std::make_shared<CountingStore>(openStore(), counts[i]);
    TDM dm(store);
    EXPECT_EQ(counts[i].queries, 0) << "a start reads no row";
    const test::Menu menu = test::Menu::of(dm);
    test::Waiter waiter(dm, menu);
    ASSERT_TRUE(waiter.takeTable("T1"));
    counts[i] = {};
    waiter.tap("EAU");
    EXPECT_EQ(counts[i].writes, 3);
    waiter.tap("EAU");
    waiter.tap("THÉ");
    EXPECT_EQ(counts[i].writes, 8);
    EXPECT_EQ(dm.sum_commande["SumOftotal"].toFloat(), 110);
    EXPECT_EQ(dm.Article["qte_stock"].toInteger(), 49);
    dm.Idle();
  }
  EXPECT_EQ(counts[0].queries, counts[1].queries);
  EXPECT_EQ(counts[0].rows, counts[1].rows);
  EXPECT_LT(counts[1].rows, 60);
}

}  // namespace
}  // namespace tavoline
