// Filters in every form that the screens build: pushed into the statement, and tested on a row in memory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sql/Cafeteria.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {
namespace {

using test::Cafeteria;
using testing::HasSubstr;
using Rows = std::vector<std::string>;

const char* const kOrders =
    "select n_commande, etat_commande, login, date_commande, J, M, A, tcc, id_caisse from commande";

/// Filters the rows of a statement in memory, as a dataset does with the rows that it posted itself.
Rows inMemory(const Cafeteria& cafeteria, const sql::Select& all, std::string_view filter) {
  const sql::ExprPtr condition = sql::resolveFilter(sql::parseFilter(filter), all.items);
  Rows kept;
  for (const std::string& line : cafeteria.rows(all)) {
    std::vector<Value> row;
    std::size_t start = 0;
    for (const sql::Item& item : all.items) {
      const std::size_t end = std::min(line.find('|', start), line.size());
      const std::string cell = line.substr(start, end - start);
      row.push_back(cell.empty() ? Value() : Value(cell).as(item.type));
      start = end + 1;
    }
    if (sql::holds(condition, all.items, row)) kept.push_back(line);
  }
  return kept;
}

Rows firstCells(Rows lines) {
  for (std::string& line : lines) line.resize(std::min(line.find('|'), line.size()));
  return lines;
}

TEST(Filter, SameInTheStoreAndInMemory) {
  const Cafeteria cafeteria;
  const struct {
    std::string filter;
    Rows orders;
  } cases[] = {
      {"", {"3", "4", "1", "2", "5"}},
      {"n_commande=2", {"2"}},
      {"n_commande='2'", {"2"}},
      {"N_Commande = -2", {}},
      {"n_commande=" + inQuotes("2") + "and etat_commande=" + inQuotes("Encours"), {"2"}},
      {"etat_commande='encours'", {}},
      {"etat_commande=\"Encours\"", {"2"}},
      {"login='0001'and id_caisse='C001'", {"3", "1"}},
      {"j>='1'and j<='2'and M>='5'and M<='5'and A='2024'and A<='2024'and etat_commande='Terminer'",
       {"1", "5"}},
      {"j>='25'and j<='5'", {}},
      {"date_commande>='01/05/2024 10:00:00'and date_commande<='02/05/2024 11:00:00'", {"1", "2", "5"}},
      {"date_commande='02-05-2024 11:00'", {"2"}},
      {"date_commande<'01/05/2024'", {"3"}},
      {"tcc>'200,4'and tcc<600.5", {"4", "1", "5"}},
      {"tcc<>80", {"4", "1", "5"}},
      {"n_commande=1or n_commande=2 and tcc=0", {"1"}},
      {"[J]>2", {"3", "4"}},
      {"id_caisse=''", {}},
      {"n_commande=''", {}},
      {"date_commande<>''", {}},
      {"login='00''01'", {}},
  };
  const sql::Select all = test::select(kOrders);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.filter);
    EXPECT_EQ(firstCells(cafeteria.rows(test::select(kOrders, c.filter))), c.orders);
    // Memory keeps no milliseconds here, which no filter above asks for.
    EXPECT_EQ(firstCells(inMemory(cafeteria, all, c.filter)), c.orders);
  }
}

TEST(Filter, GoesWhereTheColumnComesFrom) {
  const Cafeteria cafeteria;
  const struct {
    const char* text;
    const char* filter;
    Rows rows;
  } cases[] = {
      {"SELECT caisse.nom_caisse, select FROM caisse", "select='OUI'and nom_caisse='Bar'", {"Bar|OUI"}},
      {"SELECT relation_commande.n_commande, Sum(relation_commande.total) AS SumOftotal FROM "
       "relation_commande "
       "GROUP BY relation_commande.n_commande;",
       "n_commande='5'",
       {"5|200,5"}},
      {"SELECT n_commande, Sum(total) AS SumOftotal FROM relation_commande GROUP BY n_commande",
       "sumoftotal>200and n_commande<>4",
       {"1|320", "5|200,5"}},
      {"SELECT n_commande, Sum(total) AS SumOftotal FROM relation_commande GROUP BY n_commande",
       "SumOftotal=80 or n_commande=2",
       {"2|120", "3|80"}},
      {"SELECT Count(acce_caisse.id_caisse) AS CountOfid_caisse, acce_caisse.login FROM acce_caisse WHERE "
       "acce_caisse.general='NON' GROUP BY acce_caisse.login;",
       "login='0002'",
       {"1|0002"}},
      {"SELECT Count(n_caise) AS CS FROM caise", "CS>=4", {}},
      {"SELECT code AS numero FROM type WHERE code>1", "code=3", {"3"}},
      {"SELECT code AS numero FROM type WHERE code=1 or code=2", "numero=3", {}},
      {"SELECT commande.n_commande, article FROM relation_commande INNER JOIN commande ON "
       "relation_commande.n_commande = commande.n_commande",
       "n_commande='1'and article='Thé'",
       {"1|Thé"}},
  };
  for (const auto& c : cases) EXPECT_EQ(cafeteria.rows(test::select(c.text, c.filter)), c.rows) << c.filter;
}

TEST(Filter, FaultsAreNamed) {
  const struct {
    const char* filter;
    const char* part;
  } grammar[] = {
      {"table='l'été'", "la fin d'un texte entre guillemets devant « ' »"},
      {"login='00'01", "« and », « or » ou la fin du filtre devant « 01 »"},
      {"n_commande=", "une valeur à la fin"},
      {"n_commande", "une comparaison"},
      {"='12'", "le nom d'un champ devant « ='12' »"},
      {"n_commande=tcc", "une valeur devant « tcc »"},
      {"n_commande=-'1'", "une valeur"},
      {"(n_commande=1)", "le nom d'un champ"},
      {"n_commande=1 and", "le nom d'un champ à la fin"},
      {"login='00", "la fin d'un texte entre guillemets"},
  };
  for (const auto& c : grammar) {
    try {
      test::select(kOrders, c.filter);
      ADD_FAILURE() << c.filter;
    } catch (const StatementError& error) {
      EXPECT_THAT(error.what(), HasSubstr(c.part)) << c.filter;
    }
  }
  const sql::Select all = test::select(kOrders);
  const sql::ExprPtr unknown = sql::parseFilter("solde=1");
  EXPECT_THROW(sql::narrowed(all, unknown), StatementError);
  EXPECT_THROW(sql::resolveFilter(unknown, all.items), StatementError);
  for (const char* filter : {"n_commande='Label9'", "tcc='1,2,3'", "date_commande='31/02/2024'", "J=1.5"}) {
    const sql::ExprPtr bad = sql::parseFilter(filter);
    EXPECT_THROW(sql::narrowed(all, bad), ConversionError) << filter;
    EXPECT_THROW(sql::resolveFilter(bad, all.items), ConversionError) << filter;
  }
}

TEST(Filter, MissingValuesAreNeitherTrueNorFalse) {
  const std::vector<sql::Item> columns = {{nullptr, "n", FieldType::Integer},
                                          {nullptr, "t", FieldType::Text}};
  const auto column = [](const char* name) { return sql::make(sql::Column{"", name, FieldType::Integer}); };
  const auto literal = [](Value v) { return sql::make(sql::Literal{std::move(v)}); };
  const auto is = [&](int v) { return sql::binary(sql::Op::Equal, column("n"), literal(v)); };
  const auto both = [](sql::Op op, sql::ExprPtr a, sql::ExprPtr b) {
    return sql::binary(op, std::move(a), std::move(b));
  };
  const sql::ExprPtr missing = sql::make(sql::IsNull{column("n"), false});
  const struct {
    sql::ExprPtr condition;
    bool ofFive, ofNull;
  } cases[] = {
      {is(5), true, false},
      {sql::make(sql::Not{is(5)}), false, false},
      {sql::make(sql::Not{is(6)}), true, false},
      {missing, false, true},
      {sql::make(sql::IsNull{column("n"), true}), true, false},
      {both(sql::Op::Or, is(6), missing), false, true},
      {both(sql::Op::And, is(5), sql::make(sql::Not{missing})), true, false},
      {sql::make(sql::Between{column("n"), literal(9), literal(1)}), true, false},
      {sql::make(sql::Not{sql::make(sql::Between{column("n"), literal(6), literal(9)})}), true, false},
      {sql::make(sql::In{column("n"), {4, 5}, false}), true, false},
      {sql::make(sql::In{column("n"), {4, 5}, true}), false, false},
      {both(sql::Op::Like, column("t"), literal("É%")), true, true},
      {both(sql::Op::Greater, both(sql::Op::Multiply, column("n"), literal(2)), literal(9)), true, false},
  };
  int number = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(++number);
    EXPECT_EQ(sql::holds(c.condition, columns, {5, "été"}), c.ofFive);
    EXPECT_EQ(sql::holds(c.condition, columns, {Value(), "été"}), c.ofNull);
  }
}

}  // namespace
}  // namespace tavoline
