#include <gmock/gmock.h>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "support/StoreCounting.h"
#include "tools/store/Sqlite.h"

namespace tavoline {
namespace {

class DataModule : public DatasetTest {
 protected:
  void execute(const std::string& statements) {
    tool::Database(file->path().string(), tool::Database::Mode::Create).execute(statements);
  }

  void history(int orders) {
    execute(
        "insert into utilisateur(login, nom, role) values ('1', 'A', 'Admin');"
        "insert into type(code, Type_Produit) values (1, 'BOISSONS');"
        "insert into article(code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto)"
        " values ('1', 'EAU', 1, 50, 40, 'OUI'), ('2', 'THÉ', 1, 50, 30, 'OUI');"
        "insert into Table_(ID_table, \"table\", etat, control, n_commande) values (1, 'T1', 'OFF', 'close', "
        "0);"
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
        std::to_string(orders) +
        ")"
        " insert into commande(n_commande, \"table\", login, etat_commande, en_caisser, date_commande, tcc)"
        " select i, 'T1', '1', 'Terminer', 'no', '2020-01-01 10:00:00.000', 40 from n;"
        "insert into relation_commande(n_commande, code_article, article, qte, prix, total)"
        " select n_commande, '1', 'EAU', 1, 40, 40 from commande;");
  }
};

/// The data gestures of a tap on an article's tile, for the order `number` that is open on T1.
void tap(TDM& dm, const std::string& designation, const std::string& number) {
  dm.commande.Refresh();
  dm.Table_.Refresh();
  dm.Article.Refresh();
  dm.Article.FilterBy("designation_article='" + designation + "'");
  dm.relation_commande1.FilterBy("n_commande=" + inQuotes(number));
  dm.sum_commande.FilterBy("n_commande=" + inQuotes(number));
  dm.relation_commande.FilterBy("n_commande=" + inQuotes(number) +
                                "and code_article=" + inQuotes(dm.Article["code_barre"].text()));
  ASSERT_EQ(dm.Article["desto"].text(), "OUI");
  const bool ordered = !dm.relation_commande["n_commande"].isNull();
  const std::int64_t before = ordered ? dm.relation_commande["qte"].toInteger() : 0;
  ordered ? dm.relation_commande.Edit() : dm.relation_commande.Insert();
  dm.relation_commande["n_commande"] = number;
  dm.relation_commande["code_article"] = dm.Article["code_barre"];
  dm.relation_commande["article"] = dm.Article["designation_article"];
  dm.relation_commande["qte"] = Value(before + 1);
  dm.relation_commande["prix"] = dm.Article["prix_vente"];
  dm.relation_commande["total"] = dm.relation_commande["qte"] * dm.relation_commande["prix"];
  dm.relation_commande.Post();
  dm.Article.Edit();
  dm.Article["qte_stock"] = dm.Article["qte_stock"] - dm.relation_commande["qte"] + Value(before);
  dm.Article.Post();
  dm.relation_commande.Reopen();
  dm.relation_commande1.Reopen();
  dm.sum_commande.Reopen();
  if (!ordered) {
    dm.Table_.FilterBy("table='T1'");
    dm.Table_.Edit();
    dm.Table_["etat"] = "ON";
    dm.Table_["n_commande"] = dm.commande["n_commande"];
    dm.Table_.Post();
  }
  dm.Table_.Filtered(false);
  for (std::size_t i = 0; i < dm.relation_commande1.RecordCount(); ++i)
    (void)dm.relation_commande1.ValueAt(i, 5);
  EXPECT_FALSE(dm.sum_commande["SumOftotal"].isNull());
}

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
    dm.commande.Insert();
    dm.commande["n_commande"] = dm.C["C"] + Value(1);
    dm.commande["login"] = "1";
    dm.commande.Post();
    const std::string number = dm.commande["n_commande"].text();
    counts[i] = {};
    tap(dm, "EAU", number);
    EXPECT_EQ(counts[i].writes, 3);
    tap(dm, "EAU", number);
    tap(dm, "THÉ", number);
    EXPECT_EQ(counts[i].writes, 8);
    EXPECT_EQ(dm.sum_commande["SumOftotal"].toFloat(), 110);
    EXPECT_EQ(dm.Article["qte_stock"].toInteger(), 49);
    dm.Idle();
  }
  EXPECT_EQ(counts[0].queries, counts[1].queries);
  EXPECT_EQ(counts[0].rows, counts[1].rows);
  EXPECT_LT(counts[1].rows, 60);
}

TEST_F(DataModule, ACommandTakesItsParametersFromItsNewText) {
  execute(
      "insert into caisse(ID_caise, general) values ('C001', 'NON'), ('C002', 'OUI');"
      "insert into depence(ID_depence, id_caisse, date_depense, montant_dep) values"
      " (1, 'C001', '2026-01-05 10:00:00.000', 100.5), (2, 'C002', '2026-01-05 10:00:00.000', 7),"
      " (3, 'C001', '2026-02-05 10:00:00.000', 1000);");
  TDM dm(openStore());
  dm.Calcul_dep.Close();
  dm.Calcul_dep.ParamByName("x") = DateTime::of(2026, 1, 31);
  dm.Calcul_dep.ParamByName("y") = DateTime::of(2026, 1, 1);
  dm.Calcul_dep.Open();
  EXPECT_EQ(dm.Calcul_dep["SumOfmontant_dep"].text(), "100,5");
  dm.Calcul_dep.Close();
  dm.Calcul_dep.CommandText(
      "select Sum(depence.montant_dep) as S from depence where depence.id_caisse like :desk");
  EXPECT_THROW(dm.Calcul_dep.ParamByName("x"), DatasetError);
  dm.Calcul_dep.ParamByName("DESK") = "c00%";
  dm.Calcul_dep.Open();
  EXPECT_EQ(dm.Calcul_dep["S"].toFloat(), 1107.5);
}

}  // namespace
}  // namespace tavoline
