#pragma once

#include <functional>
#include <string>

#include "sales/SalesTest.h"

namespace tavoline {

/// All that a sale writes to, as one text.
inline const char Contents[] =
    "select (select json_group_array(json_array(n_commande, \"table\", login, etat_commande, HT, remi, TVA, "
    "tcc, J, M, A, date_commande, id_caisse)) from commande)"
    "|| (select json_group_array(json_array(n_commande, code_article, qte, prix, total)) from "
    "relation_commande)"
    "|| (select json_group_array(json_array(code_barre, qte_stock)) from article)"
    "|| (select json_group_array(json_array(ID_table, etat, control, n_commande)) from Table_)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)";

/// A workstation that a test starts and ends where it wants to.
class Life : public SalesTest {
 public:
  Life() { SalesTest::SetUp(); }
  explicit Life(const std::filesystem::path& folder) : SalesTest(folder) { SalesTest::SetUp(); }
  ~Life() override { SalesTest::TearDown(); }
  void TestBody() override {}

  using SalesTest::answer;
  using SalesTest::closeOrder;
  using SalesTest::lines;
  using SalesTest::press;
  using SalesTest::recording;
  using SalesTest::row;
  using SalesTest::said;
  using SalesTest::store;
  using SalesTest::tap;
  using SalesTest::tapArticle;
  using SalesTest::writes;

  std::string contents() { return row(Contents); }
  /// Runs `strike` when the n-th write from now on is asked for.
  void atWrite(int n, const std::function<void()>& strike) {
    recording().beforeWrite = [n, strike, count = 0]() mutable {
      if (++count == n) strike();
    };
  }
  void afterWrite(const std::function<void()>& then) { recording().afterWrite = then; }

  // The gestures: what comes before, the gesture, and once more after the cause of its failure is gone.
  void beforeTable() {
    openMap();
    choosePlace(1);
  }
  void takeTable() { tap("T1"); }
  void tableAgain(int) {
    if (!Commande_avnF->Visible()) takeTable();
    tapArticle("Café");
    EXPECT_EQ(lines(), "1 Café 100 100");
  }

  void beforeFirst() { openOrder("T1"); }
  void tapCafe() { tapArticle("Café"); }
  void firstAgain(int) {
    tapCafe();
    EXPECT_EQ(lines(), "2 Café 100 200") << "the refused line waited, and was posted first";
  }

  void beforeSecond() {
    openOrder("T1");
    tapCafe();
  }
  void secondAgain(int) {
    tapCafe();
    EXPECT_EQ(lines(), "3 Café 100 300");
  }

  void beforeQuantity() {
    beforeSecond();
    press(Commande_avnF->Qte);
    type(qteF->RzDBSpinEdit1, "3");
  }
  void saveQuantity() { press(qteF->Enregistrer); }
  void quantityAgain(int) {
    saveQuantity();
    EXPECT_EQ(lines(), "3 Café 100 300");
  }

  void removeLine() {
    answer(true);
    press(Commande_avnF->Supp);
  }
  void removeAgain(int) {
    removeLine();
    EXPECT_EQ(lines(), "");
  }

  void beforeLeaving() {
    beforeSecond();
    store("update commande set login='zz'");  // what does not change a row would not reach the disk
  }
  void leaveTable() { press(Commande_avnF->Enregistrer); }
  void leaveAgain(int) {
    leaveTable();
    EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "ON|open|1");
  }

  void closeTable() { press(Commande_avnF->Cloturer); }
  void closeAgain(int failed) {
    closeOrder();
    EXPECT_EQ(row("select etat_commande, HT, TVA, tcc from commande"), "Terminer|100.0|19.0|119.0");
    EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "OFF|open|0");
    // A credit that waited or was done stays, and the closing that is begun again credits once more.
    EXPECT_EQ(row("select solde from caisse where ID_caise='C001'"), failed < 6 ? "1119.0" : "1238.0");
  }
};

/// What a waiter does at a table, each a series of writes.
struct Gesture {
  const char* name;
  int writes;
  void (Life::*before)();
  void (Life::*run)();
  void (Life::*again)(int failed);
};
inline const Gesture Gestures[] = {
    {"taking a table", 3, &Life::beforeTable, &Life::takeTable, &Life::tableAgain},
    {"the first tap", 3, &Life::beforeFirst, &Life::tapCafe, &Life::firstAgain},
    {"the second tap", 2, &Life::beforeSecond, &Life::tapCafe, &Life::secondAgain},
    {"saving a quantity", 2, &Life::beforeQuantity, &Life::saveQuantity, &Life::quantityAgain},
    {"removing a line", 2, &Life::beforeSecond, &Life::removeLine, &Life::removeAgain},
    {"leaving the table", 2, &Life::beforeLeaving, &Life::leaveTable, &Life::leaveAgain},
    {"closing the table", 7, &Life::beforeSecond, &Life::closeTable, &Life::closeAgain},
};

}  // namespace tavoline
