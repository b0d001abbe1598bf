// Every statement of the datasets, on a cafeteria with known rows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "data/sql/Cafeteria.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Statements.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

using test::Cafeteria;
using test::catalog;
using test::statementOf;
using testing::ElementsAre;

using Rows = std::vector<std::string>;

sql::Update updateNamed(std::string_view name) {
  return sql::resolve(std::get<sql::Update>(sql::parseStatement(statementOf(name))), catalog());
}

/// The columns that are asked for only, so that the expected rows stay readable.
sql::Select shown(sql::Select select, const std::vector<std::string>& columns) {
  if (columns.empty()) return select;
  std::vector<sql::Item> items;
  items.reserve(columns.size());
  for (const std::string& column : columns)
    items.push_back(*std::find_if(select.items.begin(), select.items.end(),
                                  [&](const sql::Item& item) { return item.name == column; }));
  select.items = std::move(items);
  return select;
}

struct Case {
  const char* name;
  std::vector<std::string> columns;
  Rows rows;
};

void expectRows(const std::vector<Case>& cases, const sql::Parameters& parameters) {
  const Cafeteria cafeteria;
  for (const Case& c : cases)
    EXPECT_EQ(cafeteria.rows(shown(test::select(statementOf(c.name)), c.columns), parameters), c.rows)
        << c.name;
}

TEST(Statement, TablesComeInTheOrderOfInsertionUnlessSorted) {
  expectRows(
      {{"Article", {"code_barre", "designation_article"}, {"1|Café", "10|Pizza", "2|Thé"}},
       {"type_produit", {}, {"1|Boissons", "2|Plats", "3|Glaces"}},
       {"Fournisseur", {"nom_fournisseur"}, {"Laiterie", "Épicerie"}},
       {"Client", {"code_client"}, {"C1", "c2"}},
       {"TVA", {}, {"19|OUI"}},
       {"operation", {"n_"}, {"1", "2"}},
       {"utilisateur", {"login"}, {"0001", "0002"}},
       {"Endroit", {}, {"1|Salle", "4|Terrasse"}},
       {"Table_", {"table", "etat"}, {"T1|OFF", "l'été|ON"}},
       {"commande", {"n_commande"}, {"3", "4", "1", "2", "5"}},
       {"relation_commande1", {"n_commande"}, {"3", "4", "1", "1", "2", "5", "5"}},
       {"facture_achat", {"N_facture", "date_facture"}, {"1|01/05/2024", "2|02/05/2024"}},
       {"Achat", {"TOTAL"}, {"300", "100", "100"}},
       {"Caise", {"n_caise", "id_caisse"}, {"1|C002", "2|C001", "3|Tous Ciasses"}},
       {"Caisse", {"ID_caise", "solde", "select"}, {"C001|1000|OUI", "C002|50,25|OUI", "C003|9000|OUI"}},
       {"acce_caisse", {"id_caisse", "login"}, {"C001|0001", "C002|0001", "C003|0001", "C001|0002"}},
       {"Depence", {"ID_depence", "montant_dep"}, {"1|40", "2|10,5", "3|999"}}},
      {});
}

TEST(Statement, AggregatesAndGroups) {
  expectRows({{"A", {}, {"3"}},
              {"T", {}, {"7"}},
              {"E", {}, {"4"}},
              {"C", {}, {"5"}},
              {"F", {}, {"2"}},
              {"D", {}, {"3"}},
              {"CS", {}, {"3"}},
              {"CSS", {}, {"3"}},
              {"T_p", {}, {"3"}},
              {"op", {}, {"2"}},
              {"min", {}, {"30/04/2024 09:00:00"}},
              // The first open finished order as they were entered, which is not the earliest.
              {"last", {}, {"03/05/2024 12:30:15"}},
              {"sum_commande", {}, {"1|320", "2|120", "3|80", "4|600", "5|200,5"}},
              {"counting", {}, {"1|400", "2|100"}},
              {"Count_accee", {}, {"2|0001", "1|0002"}},
              {"stat_caisse", {}, {"Bar|1000", "Maison|9000", "Terrasse|50,25"}},
              {"S_01", {}, {"1|5|2024|520,5", "3|5|2024|600", "30|4|2024|80"}},
              {"D_01", {}, {"1|5|2024|40", "2|5|2024|10,5"}},
              {"best1", {}, {"4|2024|80|Boissons", "5|2024|1041|Boissons", "5|2024|600|Plats"}},
              {"best2", {}, {"4|2024|80|Thé", "5|2024|520,5|Café", "5|2024|600|Pizza", "5|2024|520,5|Thé"}}},
             {});
}

TEST(Statement, JoinsLeaveOutWhatHasNoPartner) {
  expectRows({{"imp_commande",
               {"n_commande", "article", "qte", "total", "nom", "client"},
               {"3|Thé|1|80|Amrani|", "1|Café|2|240|Amrani|Salah", "1|Thé|1|80|Amrani|Salah",
                "2|Café|1|120|Kaci|", "5|Café|1|120,5|Kaci|", "5|Thé|1|80|Kaci|"}},
              {"imp_facture_vente", {"n_commande", "article", "Telephone"}, {"1|Café|0550", "1|Thé|0550"}},
              {"imp_fac_achat", {"N_facture", "adresse", "article"}, {"1|Alger|Café", "1|Alger|Thé"}},
              {"x1", {"n_commande"}, {"4", "1", "5"}}},
             {});
}

/// The first of May from midnight to its last second, of the first waiter or of the desks whose code starts
/// so.
sql::Parameters dayOf(DateTime x, DateTime y) {
  sql::Parameters parameters;
  parameters["x"] = x;
  parameters["Y"] = y;
  parameters["z"] = "0001";
  parameters["c"] = "c00_";
  return parameters;
}

TEST(Statement, PeriodsInEitherOrder) {
  const std::vector<Case> cases = {
      {"xx1", {}, {"Café|3|240,5|360,5", "Thé|2|160|160"}},
      {"null4", {}, {"Boissons|5|400,5|520,5"}},
      {"xxx1", {}, {"Café|2|120|240", "Thé|1|80|80"}},
      {"sum_x", {}, {"520,5"}},
      {"x2", {"n_commande"}, {"1"}},
      {"xx2", {}, {"Café|2|120|240", "Thé|1|80|80"}},
      {"Null44", {}, {"Boissons|3|200|320"}},
      {"xxx3", {}, {"Café|2|120|240", "Thé|1|80|80"}},
      {"sum_x2", {}, {"320"}},
      {"x22", {"n_commande"}, {"4", "1"}},
      {"x33", {"n_commande"}, {"1"}},
      // The last closing of such a desk as it was entered, and not the latest by date.
      {"lastt", {}, {"01/04/2024 20:00:00"}},
      {"Calcul_dep", {}, {"40"}},
  };
  const DateTime start = DateTime::of(2024, 5, 1), end = DateTime::of(2024, 5, 1, 23, 59, 59);
  expectRows(cases, dayOf(start, end));
  expectRows(cases, dayOf(end, start));

  sql::Parameters parts;  // as the statistics give them: texts, and once in the wrong order
  for (const auto& [name, text] :
       {std::pair{"x", "31"}, {"y", "2"}, {"z", "5"}, {"m", "5"}, {"n", "2024"}, {"l", "2024"}})
    parts[name] = text;
  expectRows({{"sum_recette", {}, {"600"}}, {"sum_depense", {}, {"10,5"}}}, parts);
  parts["x"] = "mai";
  EXPECT_THROW(expectRows({{"sum_recette", {}, {}}}, parts), ConversionError);
}

TEST(Statement, WithoutParametersNoRowOrOneOfNulls) {
  std::vector<Case> cases;
  for (const char* name : {"xx1", "null4", "xxx1", "x2", "xx2", "Null44", "xxx3", "x22", "x33"})
    cases.push_back({name, {}, {}});
  for (const char* name : {"sum_x", "sum_x2", "lastt", "Calcul_dep", "sum_recette", "sum_depense"})
    cases.push_back({name, {}, {""}});
  expectRows(cases, {});
}

TEST(Statement, AggregatesOverNoRow) {
  const Cafeteria cafeteria;
  for (const TableInfo& table : catalog().tables()) cafeteria.run("delete from \"" + table.name + "\"");
  for (const char* name : {"C", "T", "E", "F", "D", "op", "T_p", "min", "last", "sum_x"})
    EXPECT_EQ(cafeteria.rows(test::select(statementOf(name))), Rows{""}) << name;
  for (const char* name : {"A", "CS", "CSS"})
    EXPECT_EQ(cafeteria.rows(test::select(statementOf(name))), Rows{"0"}) << name;
  for (const char* name : {"sum_commande", "S_01", "best1", "imp_commande"})
    EXPECT_EQ(cafeteria.rows(test::select(statementOf(name))), Rows{}) << name;
}

TEST(Statement, FirstAndLastAmongOtherAggregates) {
  const Cafeteria cafeteria;
  const auto rows = [&](std::string_view text, std::string_view filter = {}) {
    return cafeteria.rows(test::select(text, filter));
  };
  EXPECT_EQ(rows("select first(n_commande) as f, last(n_commande) as l from commande where login='0001'"),
            Rows{"3|1"});
  EXPECT_EQ(rows("select first(tcc)+1 as f, sum(tcc) as s, count(*) as n from commande"),
            Rows{"81|1200,5|5"});
  EXPECT_EQ(rows("select last(relation_commande.total) as l from commande join relation_commande on "
                 "commande.n_commande=relation_commande.n_commande where etat_commande='Encours'"),
            Rows{"120"});
  EXPECT_EQ(rows(statementOf("last"), "LastOfdate_fin>='03/05/2024'"), Rows{"03/05/2024 12:30:15"});
  EXPECT_EQ(rows(statementOf("last"), "LastOfdate_fin>='04/05/2024'"), Rows{});
}

TEST(Statement, Updates) {
  const auto ordersAfter = [](const char* name) {
    const Cafeteria cafeteria;
    cafeteria.run(updateNamed(name), dayOf(DateTime::of(2024, 5, 1, 23, 59, 59), DateTime::of(2024, 5, 1)));
    return cafeteria.rows(
        shown(test::select("select * from commande where en_caisser='yes'"), {"n_commande"}));
  };
  EXPECT_THAT(ordersAfter("XX"), ElementsAre("3", "1", "5"));
  const Cafeteria cafeteria;
  sql::Parameters desk = dayOf(DateTime::of(2024, 5, 2), DateTime::of(2024, 5, 1));
  desk["z"] = "C001";
  cafeteria.run(updateNamed("X"), desk);
  EXPECT_THAT(cafeteria.rows(test::select("select n_commande from commande where en_caisser='yes'")),
              ElementsAre("3", "1"));
  cafeteria.run(updateNamed("XXX"));
  EXPECT_THAT(cafeteria.rows(test::select("select control from table_")), ElementsAre("open", "open"));
  EXPECT_THROW(updateNamed("X_D"), StatementError);
}

TEST(Statement, LikeOfTheSearchFields) {
  const Cafeteria cafeteria;
  const struct {
    const char* text;
    Rows rows;
  } cases[] = {
      {"select*from utilisateur where login like'00%'", {"0001", "0002"}},
      {"select*from utilisateur where login like'%'", {"0001", "0002"}},
      {"select * from fournisseur where code_fournisseur like 'F%'", {"F1", "f2"}},
      {"select * from Fournisseur where nom_fournisseur like 'épi%'", {"f2"}},
      {"select * from Client where nom_client like 'ÉLODIE'", {"c2"}},
      {"select * from Client where nom_client like 'elo%'", {}},
      {"select * from Client where nom_client='élodie'", {}},
  };
  for (const auto& c : cases) {
    sql::Select search = test::select(c.text);
    search.items.resize(1);
    EXPECT_EQ(cafeteria.rows(search), c.rows) << c.text;
  }
}

}  // namespace
}  // namespace tavoline
