#include "tools/store/Schema.h"

#include <gmock/gmock.h>

#include "data/value/Errors.h"
#include "tests/tools/ToolFixture.h"
#include "tools/store/Creation.h"

namespace tavoline::tool {
namespace {

using testing::HasSubstr;

class SchemaTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    createStore(file());
    store = std::make_unique<Database>(file(), Database::Mode::Create);
  }
  void TearDown() override {
    store.reset();
    ToolTest::TearDown();
  }

  /// What the store answers to `sql`: nothing if it takes it.
  std::string refusal(const std::string& sql) {
    try {
      store->execute(sql);
      return {};
    } catch (const StoreError& error) {
      return error.what();
    }
  }

  std::unique_ptr<Database> store;
};

TEST_F(SchemaTest, ColumnsReadByPlaceStandWhereTheScreensReadThem) {
  struct {
    const char* table;
    int place;  // The first is 1, as rid, at 0, is not among the columns of `select *`.
    const char* column;
  } const facts[] = {
      {"article", 2, "designation_article"}, {"article", 7, "prix_vente"}, {"Table_", 2, "table"}};
  for (const auto& fact : facts)
    EXPECT_EQ(store->text("SELECT name FROM pragma_table_info('" + std::string(fact.table) +
                          "') WHERE cid = " + std::to_string(fact.place)),
              fact.column);
}

TEST_F(SchemaTest, KeysAreGuardedAndNumbersOfLogsAreNot) {
  struct {
    const char* table;
    const char* key;
    bool guarded;
  } const facts[] = {{"article", "code_barre", true},
                     {"type", "code", true},
                     {"Fournisseur", "code_fournisseur", true},
                     {"client", "code_client", true},
                     {"utilisateur", "login", true},
                     {"Endroit", "ID_endroit", true},
                     {"Table_", "ID_table", true},
                     {"commande", "n_commande", true},
                     {"facture_achat", "N_facture", true},
                     {"caisse", "ID_caise", true},
                     {"depence", "ID_depence", true},
                     {"operation", "n_", false},
                     {"caise", "n_caise", false}};
  for (const auto& fact : facts) {
    const std::string into = std::string("INSERT INTO ") + fact.table + " (" + fact.key + ") VALUES ";
    EXPECT_EQ(refusal(into + "(1), (NULL), (NULL)"), "") << fact.table;
    EXPECT_EQ(refusal(into + "(1)").empty(), !fact.guarded) << fact.table;
  }
}

TEST_F(SchemaTest, TextsKeepToTheirWidths) {
  struct {
    const char* column;
    const char* table;
    int width;
  } const facts[] = {{"login", "commande", 4},
                     {"id_utilisateur", "depence", 4},
                     {"nom_fournisseur", "facture_achat", 25},
                     {"nom_fournisseur", "Fournisseur", 30},
                     {"designation_article", "article", 130},
                     {"article", "relation_commande", 120},
                     {"table", "Table_", 80},
                     {"en_caisse", "facture_achat", 3}};
  for (const auto& fact : facts) {
    const std::string into =
        std::string("INSERT INTO \"") + fact.table + "\" (\"" + fact.column + "\") VALUES ('";
    std::string text;
    for (int i = 0; i < fact.width; ++i) text += "é";  // Characters count, not bytes.
    EXPECT_EQ(refusal(into + text + "')"), "") << fact.table << '.' << fact.column;
    EXPECT_THAT(refusal(into + text + "x')"), HasSubstr(std::string("largeur_") + fact.table + '_' +
                                                        fact.column + '_' + std::to_string(fact.width)));
  }
  EXPECT_EQ(refusal("INSERT INTO utilisateur (login) VALUES ('12345')"), "");
}

TEST_F(SchemaTest, AnOrderWithoutDiscountHasDiscountZero) {
  store->execute("INSERT INTO commande (n_commande) VALUES (1)");
  EXPECT_EQ(store->text("SELECT remise = 0 AND HT IS NULL AND TVA IS NULL FROM commande"), "1");
}

TEST_F(SchemaTest, RowNumbersAreNeverGivenTwice) {
  store->execute("INSERT INTO relation_commande (qte) VALUES (1), (2)");
  store->execute("DELETE FROM relation_commande");
  store->execute("INSERT INTO relation_commande (qte) VALUES (3)");
  EXPECT_EQ(store->integer("SELECT rid FROM relation_commande"), 3);
}

// A statement that reads the history instead of its few rows would only show after years.
TEST_F(SchemaTest, StatementsFindTheirRowsByIndex) {
  const std::string sales =
      "SELECT relation_commande.article, sum(qte) FROM (type JOIN article ON type.code = "
      "article.id_categorie) JOIN "
      "(relation_commande JOIN commande ON relation_commande.n_commande = commande.n_commande) "
      "ON article.code_barre = relation_commande.code_article WHERE etat_commande = 'Terminer' ";
  const std::string period = "date_commande BETWEEN ?1 AND ?2 ", open = "en_caisser = 'no' ";
  struct {
    std::string statement;
    const char* way;
  } const facts[] = {
      {"SELECT * FROM commande WHERE n_commande = ?1", "cle_commande (n_commande=?)"},
      {"SELECT * FROM commande WHERE etat_commande = 'Encours'", "commande_encours"},
      {"SELECT max(n_commande) FROM commande", "cle_commande"},
      {"SELECT min(date_commande) FROM commande", "commande_date"},
      {"SELECT date_commande FROM commande WHERE etat_commande = 'Terminer' AND " + open +
           "ORDER BY rid LIMIT 1",
       "commande_a_cloturer (en_caisser=? AND etat_commande=?)"},
      {"SELECT sum(tcc) FROM commande WHERE id_caisse LIKE ?3 AND " + period,
       "commande_date (date_commande>?"},
      {"UPDATE commande SET en_caisser = 'yes' WHERE etat_commande = 'Terminer' AND " + period,
       "commande_date (date_commande>?"},
      {sales + "AND " + open + "AND " + period + "GROUP BY 1",
       "commande_a_cloturer (en_caisser=? AND etat_commande=? AND date_commande>?"},
      {sales + "AND " + period + "GROUP BY 1", "commande_date (date_commande>?"},
      {sales + "AND M = ?1 AND A = ?2 GROUP BY commande.M, commande.A, 1", "commande_periode (A=? AND M=?)"},
      {"SELECT sum(tcc) FROM commande WHERE etat_commande = 'Terminer' AND J BETWEEN ?1 AND ?2 AND M BETWEEN "
       "?3 AND ?4 "
       "AND A BETWEEN ?5 AND ?6",
       "COVERING INDEX commande_periode (A>?"},
      {"SELECT n_commande, sum(total) FROM relation_commande WHERE n_commande = ?1 GROUP BY n_commande",
       "relation_commande_ligne (n_commande=?)"},
      {"SELECT * FROM relation_commande WHERE n_commande = ?1 AND code_article = ?2",
       "relation_commande_ligne (n_commande=? AND code_article=?)"},
      {"SELECT sum(montant_dep) FROM caisse JOIN depence ON caisse.ID_caise = depence.id_caisse WHERE "
       "caisse.general = 'NON' AND date_depense BETWEEN ?1 AND ?2",
       "depence_date (date_depense>?"},
      {"SELECT * FROM Achat WHERE n_facture = ?1", "Achat_facture (n_facture=?)"},
  };
  for (const auto& fact : facts) {
    std::string plan;
    for (Statement row = store->prepare("EXPLAIN QUERY PLAN " + fact.statement); row.step();)
      plan += row.text(3) + '\n';
    EXPECT_THAT(plan, HasSubstr(fact.way)) << fact.statement;
    for (const char* history : {"SCAN commande\n", "SCAN relation_commande\n", "SCAN depence\n"})
      EXPECT_THAT(plan, testing::Not(HasSubstr(history))) << fact.statement;
  }
}

TEST_F(SchemaTest, OneListOfDefinitionsMakesTheSameStore) {
  Database other(file("other.mdb"), Database::Mode::Create);
  for (const std::string& sql : schema::sqliteDefinitions()) other.execute(sql);
  const char* definitions =
      "SELECT group_concat(sql, ';') FROM (SELECT sql FROM sqlite_schema ORDER BY name)";
  EXPECT_EQ(other.text(definitions), store->text(definitions));
  EXPECT_EQ(other.text("PRAGMA application_id"), store->text("PRAGMA application_id"));
}

}  // namespace
}  // namespace tavoline::tool
