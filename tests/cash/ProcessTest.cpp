// A closing and an expense that are killed between two of their writes, and what the check of a store says of
// that; two workstations that close one desk.

#include <gmock/gmock.h>

#include <algorithm>

#include "support/Killing.h"
#include "support/Session.h"
#include "support/StoreProcess.h"
#include "tools/store/Check.h"

namespace tavoline {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Turns = test::StoreProcess::Turns;

const std::string kArrival = "start\nlogin 10 1\ntap Caise1\n";
// A believable desk: closed in the morning, with the sales since.
const std::string kEvening = "store " TAVOLINE_FOLDER
                             "cafe.sql\nsql update commande set en_caisser='yes' where n_commande=1\n"
                             "sql insert into caise(n_caise, date_lancement, date_debut, date_fin, "
                             "id_caisse, fond_caisse, ecat_caise, J, M, A) "
                             "values (1, '2024-07-14 08:00:00', '2024-07-13', '2024-07-14 08:00:00', 'C001', "
                             "11331, 0, 14, 7, 2024)\n" +
                             kArrival;
const std::string kCount =
    "tap liste_caiseF.AdvSmoothButton1\nin caiseF\nover DBEdit1 11500\nover DBEdit3 9000\n";
const std::string kExpense =
    "tap MenuF.AdvSmoothButton5\ntap liste_depenceF.AdvSmoothButton9\nin C_depenceF\nset RzDBComboBox1 "
    "Autres\n"
    "over DBEdit4 200";

const char kContents[] =
    "(select json_group_array(json_array(n_caise, total_caise, fond_caisse, J, total_depense)) from caise)"
    "|| (select json_group_array(json_array(n_commande, en_caisser)) from commande)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)"
    "|| (select json_group_array(json_array(type_depnce, montant_dep, J)) from depence)";

/// What is unfinished behind each write, as the check names it; empty: nothing.
void expectTold(const test::Killing& killing, const std::vector<std::string>& sentences) {
  tool::Findings usual;
  test::killBetweenWrites(killing, [&](int writes) {
    tool::Findings told = tool::checkStore("BDD.mdb");
    if (writes == 0) usual = told;
    std::erase_if(told, [&](const auto& finding) { return std::ranges::count(usual, finding) > 0; });
    const std::string& sentence = sentences.at(std::size_t(writes));
    if (sentence.empty()) {
      EXPECT_THAT(told, IsEmpty());
    } else {
      EXPECT_THAT(told, Contains(HasSubstr(sentence)));
    }
  });
}

TEST(CashProcessTest, AKilledClosingIsToldByTheCheckUntilItIsWhole) {
  const std::string halfWay = "Clôtures restées à mi-chemin",
                    desk = "Caisses dont le solde n'est pas le fond",
                    loss = "Clôtures dont le manque n'est pas une dépense";
  expectTold({"a closing", 6, kEvening + kCount, "tap RzBitBtn7", "", kContents},
             {"", halfWay, halfWay, desk, loss, loss, ""});
}

TEST(CashProcessTest, AKilledExpenseIsToldByTheCheckUntilItsDeskHasPaid) {
  const std::string halfWay = "Dépenses restées à mi-chemin";
  expectTold({"an expense", 3, kEvening + kExpense, "tap AdvSmoothButton1", "", kContents},
             {"", halfWay, halfWay, ""});
}

// Each closes what it saw: two whole rows, the balance of the later one, no order twice.
TEST(CashProcessTest, TwoWorkstationsCloseOneDeskAndTheLaterWins) {
  const test::Home home;
  test::StoreProcess first([](Turns& turns) {
    test::withApplication([&] {
      Session session;
      session.play(kEvening + kCount);
      turns.next();
      EXPECT_THAT(session.play("tap RzBitBtn7"), HasSubstr("closes caiseF"));
      if (::testing::Test::HasFailure()) throw std::runtime_error("an expectation failed");
      turns.next();
      EXPECT_EQ(
          session.at.value("select count(*) || ' ' || count(J) || ' ' || count(distinct n_caise) from caise"),
          "3 3 2");
      EXPECT_EQ(session.at.value("select group_concat(solde, ' ') from caisse"), "11000.0 700.4 6000.0");
      EXPECT_EQ(
          session.at.value("select group_concat(montant_dep, ' ') from depence where type_depnce='Perte'"),
          "500.0");
      EXPECT_EQ(session.at.value("select count(*) from commande where en_caisser='yes'"), "3");
    });
  });
  test::StoreProcess second([&](Turns& turns) {
    test::withApplication([&] {
      Session session(home.store());
      session.play(kArrival + "tap liste_caiseF.AdvSmoothButton1\nin caiseF\nover DBEdit3 1000");
      turns.next();
      EXPECT_THAT(session.play("tap RzBitBtn7"), HasSubstr("closes caiseF"));
    });
  });
  first.turn();
  second.turn();
  first.turn();
}

}  // namespace
}  // namespace tavoline
