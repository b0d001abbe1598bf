#include "tools/store/demo/Demo.h"

#include <gmock/gmock.h>

#include "tests/tools/ToolFixture.h"

namespace tavoline::tool {
namespace {

using Demo = ToolTest;

/// The rules of the screens that hold for every history, as statements that find what breaks them.
void expectMoneyAddsUp(const std::string& path) {
  const char* breaches[] = {
      // Totals of orders are those of their lines.
      "SELECT n_commande FROM commande WHERE etat_commande = 'Terminer' AND abs(HT - (SELECT sum(total) FROM "
      "relation_commande l WHERE l.n_commande = commande.n_commande)) > 0.005",
      "SELECT n_commande FROM relation_commande GROUP BY n_commande, code_article HAVING count(*) > 1",
      "SELECT n_commande FROM relation_commande l JOIN article ON code_barre = code_article WHERE prix <> "
      "prix_vente "
      "OR total <> qte * prix OR article <> designation_article",
      "SELECT n_commande FROM commande WHERE etat_commande = 'Terminer' AND (abs(remi - HT * remise / 100) > "
      "0.005 OR "
      "abs(TVA - HT * 19 / 100) > 0.005)",
      // Day, month and year are those of the date, and a closing covers the past only.
      "SELECT n_commande FROM commande WHERE date(date_commande) <> printf('%04d-%02d-%02d', A, M, J)",
      "SELECT n_commande FROM commande c WHERE en_caisser = 'yes' AND NOT EXISTS (SELECT 1 FROM caise k "
      "WHERE "
      "k.id_caisse = c.id_caisse AND c.date_commande BETWEEN k.date_debut AND k.date_fin)",
      "SELECT n_commande FROM commande c WHERE en_caisser = 'no' AND EXISTS (SELECT 1 FROM caise k WHERE "
      "c.date_commande BETWEEN k.date_debut AND k.date_fin)",
      // A closing holds the receipts of its desk, the expenses of ordinary desks, and leaves what it says.
      "SELECT n_caise FROM caise k WHERE abs(total_recettes - (SELECT sum(tcc) FROM commande c WHERE "
      "c.id_caisse = "
      "k.id_caisse AND c.date_commande BETWEEN k.date_debut AND k.date_fin)) > 0.01",
      "SELECT n_caise FROM caise k WHERE abs(total_depense - ifnull((SELECT sum(montant_dep) FROM depence d "
      "JOIN "
      "caisse ON ID_caise = d.id_caisse WHERE general = 'NON' AND d.date_depense BETWEEN k.date_debut AND "
      "k.date_fin), 0)) > 0.01",
      "SELECT n_caise FROM caise WHERE abs(ecat_caise - (total_caise - solde_caisse)) > 0.01 OR "
      "abs(fond_caisse - (total_caise - prelevement_caise)) > 0.01",
      "SELECT n_caise FROM caise WHERE ecat_caise < 0 AND NOT EXISTS (SELECT 1 FROM depence WHERE "
      "type_depnce = "
      "'Perte' AND montant_dep = -ecat_caise AND date(date_depense) = date(date_fin))",
      // The house desk holds what closings gave it, less its own expenses.
      "SELECT ID_caise FROM caisse WHERE general = 'OUI' AND abs(solde - (SELECT sum(prelevement_caise) FROM "
      "caise) + "
      "ifnull((SELECT sum(montant_dep) FROM depence d WHERE d.id_caisse = ID_caise), 0)) > 0.01",
      // Invoices are the sum of their lines, and what is paid and owed makes the total.
      "SELECT N_facture FROM facture_achat f WHERE abs(HT - (SELECT sum(TOTAL) FROM Achat a WHERE "
      "a.n_facture = "
      "f.N_facture)) > 0.005 OR abs(TCC - HT - TVA) > 0.005 OR abs(TCC - MONTANT_VERSE - MONTANT_RESTE) > "
      "0.005",
      "SELECT ID_caise FROM caisse WHERE solde < 0",
  };
  Database store(path, Database::Mode::Observe);
  for (const char* breach : breaches) EXPECT_EQ(store.text(breach), "") << breach;
}

TEST_F(Demo, IsAWholeCafeteria) {
  ASSERT_EQ(tool({"demo", file()}), 0) << said;
  EXPECT_EQ(tool({"check", file()}), 0) << said;
  expectMoneyAddsUp(file());

  struct {
    const char* question;
    const char* answer;
  } const facts[] = {
      {"SELECT group_concat(Endoit) FROM Endroit", "Salle,Terrasse,Étage"},
      {"SELECT count(*) FROM type", "10"},
      {"SELECT count(DISTINCT id_categorie) FROM article", "10"},
      {"SELECT count(DISTINCT \"table\") BETWEEN 20 AND 29 FROM Table_", "1"},
      {"SELECT count(DISTINCT designation_article) BETWEEN 60 AND 70 FROM article", "1"},
      {"SELECT count(*) - count(DISTINCT designation_article) FROM article", "0"},
      {"SELECT count(*) FROM article WHERE designation_article LIKE '%''%' OR desto NOT IN ('OUI', 'NON') OR "
       "prix_vente <= prix_achat OR code_barre <> rid",
       "0"},
      // Others than the first user's role log in undisturbed only when the first row is an Admin.
      {"SELECT group_concat(role) FROM (SELECT role FROM utilisateur ORDER BY rid)",
       "Admin,KeyUser,User,User"},
      {"SELECT count(*) FROM utilisateur WHERE login GLOB '*[^0-9]*' OR mot_pase GLOB '*[^0-9]*' OR mot_pase "
       "= ''",
       "0"},
      {"SELECT group_concat(ID_caise || general || \"select\") FROM caisse",
       "C001NONOUI,C002NONOUI,C003OUIOUI"},
      {"SELECT group_concat(login || ':' || desks) FROM (SELECT login, count(*) AS desks FROM acce_caisse "
       "WHERE general "
       "= 'NON' GROUP BY login ORDER BY login)",
       "10:1,20:1,31:1,32:2"},
      {"SELECT count(*) FROM acce_caisse a LEFT JOIN caisse ON ID_caise = a.id_caisse WHERE a.nom_caisse IS "
       "NOT "
       "caisse.nom_caisse OR a.general IS NOT caisse.general",
       "0"},
      {"SELECT group_concat(etat || control || (n_commande > 1150)) FROM Table_ WHERE etat <> 'OFF'",
       "ONopen1,ONopen1"},
      {"SELECT count(*) FROM commande WHERE etat_commande = 'Encours' AND date_commande < '2026-11-22 20:30'",
       "2"},
      {"SELECT count(*) > 50 FROM commande WHERE etat_commande = 'Terminer' AND en_caisser = 'no'", "1"},
      {"SELECT max(date_commande) < '2026-11-22' FROM commande WHERE etat_commande = 'Terminer'", "1"},
      {"SELECT count(DISTINCT type_depnce) FROM depence", "5"},
      {"SELECT count(*) > 3 FROM facture_achat", "1"},
      {"SELECT count(*) > 5 FROM commande JOIN client ON client.code_client = commande.code_client", "1"},
      {"SELECT count(*) > 20 FROM commande WHERE remise > 0", "1"},
  };
  Database store(file(), Database::Mode::Observe);
  for (const auto& fact : facts) EXPECT_EQ(store.text(fact.question), fact.answer) << fact.question;
}

TEST_F(Demo, GeneratedHistoryAddsUp) {
  ASSERT_EQ(tool({"generate", file(), "--orders", "2000"}), 0) << said;
  EXPECT_EQ(tool({"check", file()}), 0) << said;
  expectMoneyAddsUp(file());
  Database store(file(), Database::Mode::Observe);
  EXPECT_EQ(
      store.text("SELECT count(*) || ' ' || max(n_commande) FROM commande WHERE etat_commande = 'Terminer'"),
      "2000 2000");
  EXPECT_EQ(store.text("SELECT count(*) BETWEEN 3.6 * 2000 AND 4.4 * 2000 FROM relation_commande"), "1");
  EXPECT_EQ(store.text("SELECT count(*) FROM (SELECT A FROM commande GROUP BY A HAVING count(*) > 150)"),
            "10");
  EXPECT_EQ(store.text("SELECT count(image) FROM article"), "0");
}

TEST_F(Demo, TheSeedDecidesTheHistory) {
  const auto history = [&](const std::string& name, const char* seed) {
    EXPECT_EQ(tool({"generate", file(name), "--orders", "60", "--seed", seed}), 0) << said;
    return ask(file(name), "SELECT group_concat(date_commande || tcc) FROM commande");
  };
  const std::string first = history("1", "4");
  EXPECT_EQ(history("2", "4"), first);
  EXPECT_NE(history("3", "5"), first);
  EXPECT_EQ(tool({"generate", file("none"), "--orders", "0"}), 0) << said;
  EXPECT_EQ(tool({"check", file("none")}), 0) << said;
}

}  // namespace
}  // namespace tavoline::tool
