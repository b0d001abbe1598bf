#include "sales/SalesTest.h"

namespace tavoline {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DialogsTest : public SalesTest {
 protected:
  void SetUp() override {
    SalesTest::SetUp();
    openOrder("T1");
  }
};

TEST_F(DialogsTest, AQuantityIsBoundedByStockAndOldQuantityOnly) {
  struct Case {
    const char* typed;
    bool saved;
    const char* line;
    const char* stock;
  };
  const Case cases[] = {
      {"10", true, "10 Café 100 1000", "0"},  // stock 9 and the old 1
      {"1", true, "1 Café 100 100", "9"},     // back again
      {"11", false, "11 Café 100 100", "9"},
      {"4", true, "4 Café 100 400", "6"},  // the refused dialog is still open
      {"0", true, "0 Café 100 0", "10"},
      {"-2", true, "-2 Café 100 -200", "12"},
  };
  tapArticle("Café");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    if (!qteF->Visible()) press(Commande_avnF->Qte);
    ASSERT_TRUE(qteF->Visible());
    forgetWrites();
    type(qteF->RzDBSpinEdit1, c.typed);
    press(qteF->Enregistrer);
    EXPECT_EQ(qteF->Visible(), !c.saved);
    EXPECT_EQ(lines(), c.line);
    EXPECT_EQ(stockOf("Café"), c.stock);
    if (c.saved)
      EXPECT_THAT(writes(), ElementsAre("update article qte_stock", "update relation_commande qte,total"));
    else
      EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(said(), c.saved ? std::vector<std::string>{} : std::vector<std::string>{"stock insuffisant"});
  }
}

TEST_F(DialogsTest, AQuantityWithoutStockKeepingMovesNoStockAndKeepsThePrice) {
  tapArticle("Thé");
  store("update article set prix_vente=95 where code_barre='2'");
  press(Commande_avnF->Qte);
  EXPECT_EQ(qteF->Label2->Caption(), "1");
  forgetWrites();
  type(qteF->RzDBSpinEdit1, "30");
  press(qteF->Enregistrer);
  EXPECT_THAT(writes(), ElementsAre("update relation_commande qte,total"));
  EXPECT_EQ(row("select qte, prix, total from relation_commande"), "30|80.0|2400.0");
  EXPECT_EQ(Commande_avnF->DBText2->Caption(), "2400");
}

TEST_F(DialogsTest, SavingAnUnchangedQuantityOfTheSecondLineChangesNothing) {
  tapArticle("Café");
  tapArticle("Eau");
  clickLine(1);
  press(Commande_avnF->Qte);
  press(qteF->Enregistrer);
  EXPECT_EQ(lines(), "1 Café 100 100; 1 Eau 50 50");
  EXPECT_EQ(stockOf("Eau"), "0");
  EXPECT_FALSE(qteF->Visible());
}

TEST_F(DialogsTest, ARefusedQuantityIsDroppedByAReopeningAndPostedByAChangeOfFilter) {
  tapArticle("Café");
  for (const bool posted : {false, true}) {
    if (!qteF->Visible()) press(Commande_avnF->Qte);
    type(qteF->RzDBSpinEdit1, "50");
    press(qteF->Enregistrer);
    EXPECT_THAT(said(), ElementsAre("stock insuffisant"));
    EXPECT_EQ(DM->relation_commande1.State(), DatasetState::Edit);
    press(posted ? Commande_avnF->Enregistrer : Commande_avnF->Fermer);
    EXPECT_EQ(row("select qte, total from relation_commande"), posted ? "50|100.0" : "1|100.0");
  }
  EXPECT_EQ(stockOf("Café"), "9");
}

TEST_F(DialogsTest, AQuantityThatIsNoNumberIsRefusedByTheField) {
  tapArticle("Café");
  press(Commande_avnF->Qte);
  forgetWrites();
  type(qteF->RzDBSpinEdit1, "deux");
  press(qteF->Enregistrer);
  EXPECT_FALSE(said().empty());
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_EQ(row("select qte, total from relation_commande"), "1|100.0");
}

TEST_F(DialogsTest, ADiscountComputesTheTotalsInFivePosts) {
  tapArticle("Plat", 2);
  forgetWrites();
  during(Commande_avnF->Remisse, [this] {
    EXPECT_FALSE(champsF->DBEdit2->isEnabled());
    type(champsF->DBEdit1, "100");
    EXPECT_EQ(champsF->DBEdit1->Text(), "10") << "it holds two characters";
    press(champsF->Enregistrer);
  });
  EXPECT_THAT(writes(), ElementsAre("update commande remise", "update commande HT,login",
                                    "update commande remi", "update commande TVA", "update commande tcc"));
  EXPECT_EQ(row("select remise, HT, remi, TVA, tcc, etat_commande from commande"),
            "10.0|400.0|40.0|76.0|436.0|Encours");
  EXPECT_TRUE(DM->commande.Filtered());
  tapArticle("Plat", 2);
  EXPECT_EQ(row("select HT, tcc from commande"), "400.0|436.0") << "later lines are not in it";
}

TEST_F(DialogsTest, TheCommentIsLostWithTheReopening) {
  store("update commande set commentaire='avant'");
  tapArticle("Café");
  during(Commande_avnF->Remisse, [this] {
    type(champsF->DBEdit1, "5");
    type(champsF->DBEdit3, "sans sucre");
    press(champsF->Enregistrer);
  });
  EXPECT_EQ(row("select commentaire, remise, remi from commande"), "avant|5.0|5.0");
}

TEST_F(DialogsTest, ADiscountThatIsNoNumberLeavesTheRowInEdit) {
  for (const char* typed : {"", "ab"}) {
    SCOPED_TRACE(typed);
    tapArticle("Café");
    forgetWrites();
    during(Commande_avnF->Remisse, [&] {
      type(champsF->DBEdit1, typed);
      press(champsF->Enregistrer);
      EXPECT_FALSE(said().empty());
      press(champsF->Fermer);
    });
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(DM->commande.State(), DatasetState::Edit);
    EXPECT_EQ(row("select remise from commande"), "0.0");
  }
}

TEST_F(DialogsTest, ObsActsOnTheOrderOfTheLastRemisse) {
  tapArticle("Café");
  during(Commande_avnF->Obs, [this] {
    press(champsF->Enregistrer);
    EXPECT_EQ(said().size(), 1u) << "\"Label9\" is no order number";
    press(champsF->Fermer);
  });
  during(Commande_avnF->Remisse, [this] { press(champsF->Enregistrer); });
  press(Commande_avnF->Enregistrer);

  tap("T2");
  tapArticle("Thé");
  ASSERT_EQ(Commande_avnF->DBText3->Caption(), "2");
  forgetWrites();
  during(Commande_avnF->Obs, [this] {
    type(champsF->DBEdit1, "20");
    press(champsF->Enregistrer);
  });
  EXPECT_EQ(row("select n_commande, remise, HT from commande where remise=20"), "1|20.0|100.0");
  EXPECT_EQ(Commande_avnF->DBText3->Caption(), "1") << "the screen now stands on the other order";
}

TEST_F(DialogsTest, TheInputsAreEnabledForTheNextShowing) {
  tapArticle("Café");
  const auto inputs = [] { return std::pair(champsF->DBEdit1->isEnabled(), champsF->DBEdit3->isEnabled()); };
  std::vector<std::pair<bool, bool>> seen;
  for (Button* opener :
       {Commande_avnF->Obs, Commande_avnF->Obs, Commande_avnF->Remisse, Commande_avnF->Remisse})
    during(opener, [&] {
      seen.push_back(inputs());
      press(champsF->Fermer);
    });
  EXPECT_THAT(seen, ElementsAre(std::pair(true, true), std::pair(true, false), std::pair(true, false),
                                std::pair(true, true)));
}

TEST_F(DialogsTest, ATypedDiscountLeftByFermerIsStoredByTheNextPostAndDroppedByTheClosing) {
  const auto leaveTyped = [this] {
    tapArticle("Café");
    during(Commande_avnF->Remisse, [this] {
      type(champsF->DBEdit1, "15");
      press(champsF->Fermer);
    });
  };
  leaveTyped();
  EXPECT_EQ(row("select remise from commande"), "0.0");
  press(Commande_avnF->Enregistrer);
  EXPECT_EQ(row("select remise, remi, tcc from commande"), "15.0||");
  tap("T2");
  leaveTyped();
  closeOrder();
  EXPECT_EQ(row("select remise, remi, tcc from commande where n_commande=2"), "0.0|0.0|119.0");
}

TEST_F(DialogsTest, ADiscountWithoutLinesIsIncomplete) {
  forgetWrites();
  during(Commande_avnF->Remisse, [this] {
    type(champsF->DBEdit1, "15");
    press(champsF->Enregistrer);
    EXPECT_THAT(said(), ElementsAre("Opétation incomplet"));
    EXPECT_EQ(champsF->DBEdit1->Text(), "0");
    press(champsF->Fermer);
  });
  EXPECT_THAT(writes(), IsEmpty());
}

}  // namespace
}  // namespace tavoline
