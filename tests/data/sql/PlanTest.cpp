// What the filters of the screens cost in a store with a history: index look-ups, never a walk through a
// table.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "data/sql/Cafeteria.h"
#include "data/sql/Statements.h"

namespace tavoline {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

struct Narrowing {
  std::string_view name;
  std::string filter;
  /// Tables that are walked through without harm: they have a few dozen rows at the most.
  std::vector<std::string> small;
};

/// Whether a step walks through a small table, or through the one row of a statement without tables.
bool isSmall(const std::string& step, const Narrowing& narrowing) {
  return step == "SCAN CONSTANT ROW" ||
         std::any_of(narrowing.small.begin(), narrowing.small.end(),
                     [&](const std::string& table) { return step.starts_with("SCAN " + table); });
}

TEST(Plan, FiltersReachAnIndexOfEveryLargeTable) {
  const test::Cafeteria cafeteria;
  const std::vector<Narrowing> cases = {
      {"commande", "n_commande='12'", {}},
      {"relation_commande", "n_commande='12'and code_article='3'", {}},
      {"sum_commande", "n_commande='12'", {}},
      {"imp_commande", "n_commande='12'", {"utilisateur"}},
      {"imp_facture_vente", "n_commande='12'", {"utilisateur", "client"}},
      {"counting", "n_facture='12'", {}},
      {"imp_fac_achat", "n_facture='12'", {"Fournisseur"}},
      {"Article", "code_barre='12'", {}},
      {"Article", "designation_article='Thé'", {}},
      {"S_01", "j>='1'and j<='31'and M='5'and A='2024'", {}},
      {"D_01", "j>='1'and j<='31'and M='5'and A='2024'", {"caisse"}},
      {"best1", "M='5'and A='2024'", {"type"}},
      {"best2", "M='5'and A='2024'", {}},
      {"last", "", {}},
      {"x1", "", {}},
      {"xx1", "", {"type"}},
      {"Calcul_dep", "", {"caisse"}},
      {"sum_recette", "", {}},
  };
  for (const Narrowing& c : cases) {
    SCOPED_TRACE(std::string(c.name) + " " + c.filter);
    for (const std::string& step : cafeteria.plan(test::select(test::statementOf(c.name), c.filter)))
      EXPECT_TRUE(!step.starts_with("SCAN") || isSmall(step, c)) << step;
  }
}

TEST(Plan, TheTicketOfAnOrderLooksUpOrderAndLines) {
  EXPECT_THAT(test::Cafeteria().plan(test::select(test::statementOf("imp_commande"), "n_commande='12'")),
              AllOf(Contains(HasSubstr("SEARCH commande USING INDEX cle_commande (n_commande=?)")),
                    Contains(HasSubstr(
                        "SEARCH relation_commande USING INDEX relation_commande_ligne (n_commande=?)"))));
}

/// A table in its own order is read as it lies, page by page, with nothing to sort.
TEST(Plan, TablesAreReadAsTheyLie) {
  const test::Cafeteria cafeteria;
  for (const char* text :
       {"select * from commande", "select * from relation_commande",
        "select * from article order by code_barre", "select * from caise order by n_caise"})
    EXPECT_THAT(cafeteria.plan(test::select(text)), Each(Not(HasSubstr("TEMP B-TREE")))) << text;
}

}  // namespace
}  // namespace tavoline
