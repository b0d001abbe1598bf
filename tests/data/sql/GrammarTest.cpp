// What the dialect reads, what it refuses, and what becomes of the names.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sql/Cafeteria.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Statements.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

using test::Cafeteria;
using test::catalog;
using test::select;
using testing::ElementsAre;
using testing::HasSubstr;

std::string messageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const StatementError& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

void resolveText(std::string_view text) {
  const sql::Statement statement = sql::parseStatement(text);
  if (const auto* update = std::get_if<sql::Update>(&statement)) {
    sql::resolve(*update, catalog());
  } else {
    sql::resolve(std::get<sql::Select>(statement), catalog());
  }
}

TEST(Grammar, ReadsHowEverItIsWritten) {
  const Cafeteria cafeteria;
  const struct {
    const char* text;
    std::vector<std::string> rows;
  } cases[] = {
      {"select*from Endroit where Endoit like'sal%'", {"1|Salle"}},
      {"SELECT ID_ENDROIT\r\nFrom ENDROIT\n\n  WHERE (((endroit.endoit)=\"Salle\"))\n;", {"1"}},
      {"select [table] from [Table_] where [table]='l''été'", {"l'été"}},
      {"select table_.table from table_ where Table_.TABLE=\"l'été\"", {"l'été"}},
      {"select nom_caisse from caisse where select='OUI'and general='OUI'", {"Maison"}},
      {"select nom_caisse from caisse where caisse.select = 'OUI' and not general = 'NON'", {"Maison"}},
      {"select code c from type order by c desc", {"3", "2", "1"}},
      {"select type.code as min from type where type.code<>2 order by min", {"1", "3"}},
      {"select code from type where code=1or code=3", {"1", "3"}},
      {"select code from type where code<=1 or code>=3 and code<4", {"1", "3"}},
      {"select code from type where (code=1 or code=3) and code>1", {"3"}},
      {"select code from type where code*2-1>=3", {"2", "3"}},
      {"select code+10/4 as x from type where code=1", {"3,5"}},
      {"select code - 1 - -1 as x, -code as y from type where code=3", {"3|-3"}},
      {"select tcc / remise as r from commande where n_commande=1", {""}},
      {"select n_commande from commande where tcc is null", {"2"}},
      {"select n_commande from commande where tcc is not null and not (login='0001' or login='0009')", {"5"}},
      {"select n_commande from commande where n_commande not between 4 and 2 and login not like '%9'",
       {"1", "5"}},
      {"select Count(*) as n from commande", {"5"}},
      {"select code, type_produit from type join article on code=id_categorie where code_barre='10'",
       {"2|Plats"}},
      {"select table, sum(tcc) as total from commande group by table order by total", {"T7|", "T1|1200,5"}},
      {"select A, M from depence group by M, A order by commande.M", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    if (c.rows.empty()) {
      EXPECT_THROW(select(c.text), StatementError);
    } else {
      EXPECT_EQ(cafeteria.rows(select(c.text)), c.rows);
    }
  }
}

TEST(Grammar, TellsWhatIsWrongAndWhere) {
  const struct {
    const char* text;
    const char* part;
  } cases[] = {
      {"", "« select » ou « update » à la fin (caractère 1)"},
      {"delete from type", "« select » ou « update » devant « delete from type » (caractère 1)"},
      {"select * from type where", "une valeur ou le nom d'une colonne à la fin (caractère 25)"},
      {"select * from type where 'é' = = code", "devant « = code » (caractère 32)"},
      {"select * from type where login='", "la fin d'un texte entre guillemets"},
      {"select from type", "une valeur ou le nom d'une colonne devant « from type »"},
      {"select * from (type", "« ) » à la fin"},
      {"select * from type order code", "« by » devant « code »"},
      {"select * from type; select * from type", "la fin de l'instruction"},
      {"select code, * from type where code = 1 2", "la fin de l'instruction devant « 2 »"},
      {"select Avg(code) from type", "une fonction connue"},
      {"select * from type where code = #", "un signe connu devant « # »"},
      {"select * from type where code = : x", "un nom de paramètre"},
      {"select * from [type", "un nom entre crochets"},
      {"select * from type where code not 3", "« like » ou « between »"},
      {"update type set article.code = 1", "une colonne de la table modifiée"},
  };
  for (const auto& c : cases)
    EXPECT_THAT(messageOf([&] { sql::parseStatement(c.text); }), HasSubstr(c.part)) << c.text;
}

TEST(Grammar, RefusesWhatWouldWearOutTheMachine) {
  const std::string deep(2000, '(');
  EXPECT_THAT(messageOf([&] { sql::parseStatement("select * from type where " + deep); }),
              HasSubstr("parenthèses"));
  EXPECT_THAT(messageOf([&] { sql::parseStatement("select * from " + deep); }), HasSubstr("parenthèses"));
  std::string longFilter = "code=1";
  for (int i = 0; i < 2000; ++i) longFilter += "and code=1";
  EXPECT_THAT(messageOf([&] { sql::parseFilter(longFilter); }), HasSubstr("plus courte"));
}

TEST(Resolver, RefusesWhatTheTablesDoNotHold) {
  const struct {
    const char* text;
    const char* part;
  } cases[] = {
      {"select * from caises", "La table « caises » manque dans les données."},
      {"select endroit from Endroit", "La colonne « endroit » manque dans les données."},
      {"select commande.code from commande", "« code » de la table « commande » manque"},
      {"select rid from type", "La colonne « rid » manque"},
      {"select code from type where article.code_barre='1'", "La table « article » n'est pas parmi"},
      {"select type.code from type join type on type.code=type.code", "deux fois"},
      {"select n_commande from commande join relation_commande on tcc=total", "plusieurs tables"},
      {"update type set nom='x'", "La colonne « nom » de la table « type » manque"},
      {"select Sum(nom) as x from utilisateur", "Seuls des nombres s'additionnent"},
      {"select date_commande + 1 as x from commande", "Seuls des nombres se calculent"},
      {"select code from type where code", "là où il faut une condition"},
      {"select code from type where (code=1)=2", "là où il faut une valeur"},
      {"select code from type where max(code)=1", "fonction d'ensemble"},
      {"select max(sum(code)) as x from type", "en contient une autre"},
      {"select code, count(*) as n from type", "La colonne « code » n'est ni regroupée"},
      {"select * from type group by code", "« Type_Produit » n'est ni regroupée"},
      {"select first(tcc) as x from commande group by table", "First et Last"},
      {"select code from type order by 1", "Un tri se fait sur une colonne"},
      {"select code from type group by 1", "Un regroupement se fait sur une colonne"},
  };
  for (const auto& c : cases)
    EXPECT_THAT(messageOf([&] { resolveText(c.text); }), HasSubstr(c.part)) << c.text;

  for (const char* text :
       {"select * from commande where n_commande='douze'", "select * from type where code=1.5",
        "select * from commande where date_commande between 'hier' and 'demain'",
        "update commande set tcc=''"})
    EXPECT_THROW(resolveText(text), ConversionError) << text;
}

TEST(Resolver, KnowsTypesNamesAndTables) {
  const sql::Select mixed = select(
      "select commande.N_COMMANDE, HT as montant, count(*) as n, sum(J) as jours, max(date_commande) as "
      "jour, "
      "min(commande.login) as qui, sum(tcc)*2 from commande join utilisateur on "
      "commande.login=utilisateur.login "
      "group by n_commande, ht");
  std::vector<std::string> items;
  for (const sql::Item& item : mixed.items)
    items.push_back(item.name + ":" + "TIFDB"[static_cast<std::size_t>(item.type)]);
  EXPECT_THAT(items,
              ElementsAre("n_commande:I", "montant:F", "n:I", "jours:I", "jour:D", "qui:T", "Expr7:F"));
  EXPECT_THAT(sql::tablesOf(mixed), ElementsAre("commande", "utilisateur"));

  for (const char* text :
       {"select * from CAISSE", "select * from article where prix_vente>1 order by code_barre"})
    EXPECT_TRUE(select(text).updatable) << text;
  for (const char* text : {"select ID_caise from caisse", "select count(*) as n from caisse",
                           "select * from commande join client on commande.code_client=client.code_client"})
    EXPECT_FALSE(select(text).updatable) << text;
}

TEST(Resolver, NamesParametersOnceInOrder) {
  EXPECT_THAT(sql::parametersOf(sql::parseStatement(
                  "select :b as x from type join article on code=:A where code between :x and :a and :B=1")),
              ElementsAre("b", "A", "x"));
  EXPECT_THAT(sql::parametersOf(sql::parseStatement("update type set code=:z where code=:y")),
              ElementsAre("z", "y"));
}

}  // namespace
}  // namespace tavoline
