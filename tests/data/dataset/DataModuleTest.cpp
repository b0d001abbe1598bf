#include <gmock/gmock.h>

#include <utility>

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

TEST_F(DataModule, AQuietMomentLetsGoOfAVersionWhoseRowsANewerOneShowsToo) {
  auto held = here->snapshot();
  TDM dm(here);
  const std::weak_ptr<const Snapshot> atStart = std::exchange(held, nullptr);
  here->insert("client", {{"code_client", Value("K1")}});
  dm.Client.Reopen();
  dm.imp_facture_vente.Reopen();
  EXPECT_FALSE(atStart.expired()) << "no dataset held it";
  dm.Idle();
  EXPECT_TRUE(atStart.expired());
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
