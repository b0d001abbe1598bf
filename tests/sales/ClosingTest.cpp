#include "sales/SalesTest.h"

namespace tavoline {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ClosingTest : public SalesTest {
 protected:
  void SetUp() override {
    SalesTest::SetUp();
    openOrder("T1");
  }
};

TEST_F(ClosingTest, TheClosingWritesTotalsThenDeskThenTable) {
  tapArticle("Plat", 2);
  store("update commande set remise=10");
  setClock(DateTime::of(2024, 8, 1, 0, 5, 0));
  forgetWrites();
  closeOrder();
  EXPECT_THAT(writes(),
              ElementsAre("update commande etat_commande,HT,login,date_commande", "update commande J,M,A",
                          "update commande remi", "update commande TVA", "update commande tcc,id_caisse",
                          "update caisse solde", "update Table_ etat,control,n_commande"));
  EXPECT_EQ(
      row("select etat_commande, HT, remi, TVA, tcc, id_caisse, login, J, M, A, date_commande, en_caisser "
          "from commande"),
      "Terminer|400.0|40.0|76.0|436.0|C001|ab12|1|8|2024|2024-08-01 00:05:00.000|no");
  EXPECT_EQ(row("select solde from caisse where ID_caise='C001'"), "1436.0");
  EXPECT_EQ(row("select solde from caisse where ID_caise='C000'"), "5000.0");
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "OFF|open|0");
  EXPECT_EQ(stockOf("Plat"), "7") << "a closing moves no stock";

  tap("T1");
  EXPECT_EQ(Commande_avnF->DBText3->Caption(), "2") << "the table takes the next order";
  EXPECT_EQ(lines(), "");
  EXPECT_EQ(Commande_avnF->DBText2->Caption(), "");
}

TEST_F(ClosingTest, WithoutUseOfTheTaxTheTotalIsNetOfTheDiscountOnly) {
  for (const char* use : {"NON", "", "oui"}) {
    SCOPED_TRACE(use);
    store("update TVA set utilisation='" + std::string(use) + "'");
    DM->TVA.Reopen();
    tapArticle("Plat", 2);
    store("update commande set remise=10");
    closeOrder();
    EXPECT_EQ(row("select TVA, tcc from commande order by n_commande desc"), "0.0|360.0");
    tap("T1");
  }
}

TEST_F(ClosingTest, OnlyTheOrderThatIsClosedIsTouched) {
  tapArticle("Café");
  press(Commande_avnF->Enregistrer);
  tap("T2");
  tapArticle("Thé");
  closeOrder();
  EXPECT_EQ(row("select etat_commande, HT from commande where n_commande=1"), "Encours|");
  EXPECT_EQ(row("select etat_commande, HT from commande where n_commande=2"), "Terminer|80.0");
  EXPECT_EQ(row("select etat from Table_ where ID_table=1"), "ON");
}

TEST_F(ClosingTest, WithoutADeskNothingIsClosed) {
  tapArticle("Café");
  DM->operation.Edit();
  DM->operation["id_caisse_active"] = Value();
  DM->operation.Post();
  forgetWrites();
  press(Commande_avnF->Cloturer);
  EXPECT_THAT(said(), ElementsAre("vous n'avez pas d'accés a la caisse pour cloturer cette commande"));
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_TRUE(Commande_avnF->Visible());
}

TEST_F(ClosingTest, TheChangeIsTheTotalLessTheMoneyTaken) {
  struct Case {
    const char* typed;
    const char* change;
    std::size_t errors;
  };
  const Case cases[] = {{"500", "-64", 0},   {"436", "0", 0}, {"400", "36", 0},
                        {"435,5", "0,5", 0}, {"", "", 0},     {"200x", "236", 1}};
  tapArticle("Plat", 2);
  store("update commande set remise=10");
  during(Commande_avnF->Cloturer, [&] {
    for (const Case& c : cases) {
      SCOPED_TRACE(c.typed);
      type(RenduF->Edit1, c.typed);
      EXPECT_EQ(RenduF->Label10->Caption(), c.change);
      EXPECT_EQ(said().size(), c.errors);
    }
    finish();
  });
}

TEST_F(ClosingTest, EnterFinishesWithoutAnyAmount) {
  tapArticle("Café");
  during(Commande_avnF->Cloturer, [&] {
    EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
    RenduF->close();
    EXPECT_TRUE(RenduF->Visible()) << "it can only be left by its button";
    printed([this] { type(RenduF->Edit1, "\n"); }, *Commande_avnF->frxReport1);
  });
  EXPECT_FALSE(RenduF->Visible());
  EXPECT_FALSE(Commande_avnF->Visible());
  EXPECT_EQ(RenduF->Edit1->Text(), "");
  EXPECT_EQ(RenduF->Label10->Caption(), "");
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(MenuF->Label2->Caption(), "");
  EXPECT_TRUE(DM->imp_commande.Filtered()) << "the ticket keeps its order";
  for (const Dataset* dataset : {&DM->Table_, &DM->commande, &DM->relation_commande, &DM->relation_commande1,
                                 &DM->sum_commande, &DM->Caisse})
    EXPECT_FALSE(dataset->Filtered()) << dataset->Name();
}

TEST_F(ClosingTest, TheTicketsShowTheOrder) {
  tapArticle("Café");
  tapArticle("Thé");
  EXPECT_THAT(printed([this] { press(Commande_avnF->Imprimer); }, *Commande_avnF->frxReport2),
              HasSubstr("T1"));
  during(Commande_avnF->Cloturer,
         [this] { EXPECT_THAT(finish(), AllOf(HasSubstr("Café"), HasSubstr("214,2 DA"))); });
}

TEST_F(ClosingTest, TwoWorkstationsLoseNoOrderButMayLoseACredit) {
  tapArticle("Café");
  store("update caisse set solde=2000 where ID_caise='C001'");
  closeOrder();
  EXPECT_EQ(row("select solde from caisse where ID_caise='C001'"), "1119.0")
      << "the desk is read as it was opened";
}

}  // namespace
}  // namespace tavoline
