#include "sales/SalesTest.h"

namespace tavoline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class HistoryTest : public SalesTest {
 protected:
  void SetUp() override {
    SalesTest::SetUp();
    order(1, "Terminer", 14, 7, 2024);
    order(2, "Terminer", 31, 1, 2024);
    order(3, "Encours", 14, 7, 2024);
    order(4, "Terminer", 5, 2, 2024);
    order(5, "Terminer", 15, 2, 2025);
    store(
        "insert into client(code_client, nom_client) values ('K1', 'Benali'), ('K2', 'Benali'), ('K3', "
        "'Zidi')");
    DM->Client.Reopen();
    press(MenuF->AdvSmoothButton1);
    press(history().Initialiser);
  }

  static Tliste_commandeF& history() { return *liste_commandeF; }

  void order(int number, const std::string& state, int day, int month, int year) {
    const std::string n = std::to_string(number);
    store(
        "insert into commande(n_commande, \"table\", login, etat_commande, HT, remi, TVA, tcc, J, M, A, "
        "date_commande, en_caisser) values (" +
        n + ", 'T1', 'ab12', '" + state + "', 100, 0, 19, 119, " + std::to_string(day) + ", " +
        std::to_string(month) + ", " + std::to_string(year) + ", '" +
        DateTime::of(year, month, day).stored() + "', 'no')");
    store("insert into relation_commande(n_commande, code_article, article, qte, prix, total) values (" + n +
          ", '1', 'Café', 1, 100, 100)");
  }

  std::string shown() {
    const QAbstractItemModel* model = history().DBGrid1->model();
    std::string numbers;
    for (int line = 0; line < model->rowCount(); ++line)
      numbers += (line ? " " : "") + model->index(line, 0).data().toString().toStdString();
    return numbers;
  }

  void fill(const char* number, const char* start, const char* end, const char* state) {
    if (*number) type(history().RzEdit1, number);
    if (*start) type(history().RzDateTimeEdit1, start);
    if (*end) type(history().RzDateTimeEdit2, end);
    history().RzDBLookupComboBox1->Text(state);
  }

  void standOn(int number) { ASSERT_TRUE(DM->commande.Locate("n_commande", number)); }
};

TEST_F(HistoryTest, FourCombinationsFilterAndTheOthersChangeNothing) {
  struct Case {
    const char *number, *start, *end, *state;
    const char* shown;
  };
  const Case cases[] = {
      {"2", "", "", "", "2"},
      {"9", "", "", "", ""},
      {"", "", "", "Encours", "3"},
      {"", "14/07/2024", "", "Terminer", "1"},  // the end follows the start
      {"", "14/07/2024", "", "", "1 3"},
      {"", "01/01/2024", "31/12/2024", "", "1 2 3 4"},
      {"", "01/01/2024", "28/02/2024", "", "4"},  // no day after the 28th of any month
      {"", "25/01/2024", "05/02/2024", "", ""},   // no day is both
      {"", "01/12/2024", "28/02/2025", "", ""},   // no month is both
      {"", "01/02/2025", "28/02/2026", "", "5"},  // the year is the start's
      {"2", "14/07/2024", "", "", "1 2 3 4 5"},
      {"2", "", "", "Encours", "1 2 3 4 5"},
      {"", "", "14/07/2024", "", "1 2 3 4 5"},
      {"", "", "", "", "1 2 3 4 5"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.number) + "," + c.start + "," + c.end + "," + c.state);
    press(history().Initialiser);
    fill(c.number, c.start, c.end, c.state);
    press(history().Filtrer);
    EXPECT_EQ(shown(), c.shown);
  }
}

TEST_F(HistoryTest, EnterInAnyFilterFilters) {
  type(history().RzEdit1, "quatre\n");
  EXPECT_EQ(said().size(), 1u) << "the data refuse what is no number";
  type(history().RzEdit1, "4\n");
  EXPECT_EQ(shown(), "4");
  press(history().Initialiser);
  type(history().RzDateTimeEdit1, "14/07/2024\n");
  EXPECT_EQ(shown(), "1 3");
  type(history().RzDateTimeEdit2, "31/07/2024\n");
  EXPECT_EQ(shown(), "1 3");
  history().RzDBLookupComboBox1->Text("Encours");
  history().RzDBLookupComboBox1->setFocus();
  pressKey(Qt::Key_Return);
  EXPECT_EQ(shown(), "3");
}

TEST_F(HistoryTest, EscapeEmptiesTheFiltersWithoutReadingAgain) {
  fill("2", "", "", "");
  press(history().Filtrer);
  order(6, "Terminer", 1, 1, 2024);
  pressKey(Qt::Key_Escape);
  EXPECT_EQ(history().RzEdit1->Text(), "");
  EXPECT_EQ(shown(), "1 2 3 4 5");
  press(history().Initialiser);
  EXPECT_EQ(shown(), "1 2 3 4 5 6");
}

TEST_F(HistoryTest, ClosingKeepsTheFilterForTheNextScreen) {
  fill("", "", "", "Encours");
  press(history().Filtrer);
  press(history().Fermer);
  EXPECT_FALSE(history().Visible());
  EXPECT_TRUE(DM->commande.Filtered());
}

TEST_F(HistoryTest, TheReprintIsGuardedByTheLinesOfTheOrderEntry) {
  standOn(4);
  history().Reimprimer->trigger();
  EXPECT_THAT(said(), ElementsAre("Opétation incomplet"))
      << "the order entry was opened before there were lines";
  DM->relation_commande1.Reopen();
  EXPECT_THAT(printed([] { history().Reimprimer->trigger(); }, *history().frxReport1), HasSubstr("Café"));
  EXPECT_EQ(DM->imp_commande["n_commande"], Value(4));
}

TEST_F(HistoryTest, AnInvoiceNeedsAClient) {
  standOn(4);
  history().ImprimerFactureClient->trigger();
  EXPECT_THAT(said(), ElementsAre("Facture incomplet"));
  store("update commande set code_client='K3', client='Zidi' where n_commande=4");
  EXPECT_THAT(printed([] { history().ImprimerFactureClient->trigger(); }, *history().frxReport2),
              HasSubstr("Zidi"));
  EXPECT_FALSE(DM->imp_facture_vente.Filtered());
}

TEST_F(HistoryTest, TheJournalHoldsWhatTheFilterShows) {
  store("update commande set HT=null, tcc=null where n_commande=3");
  press(history().Initialiser);
  fill("", "14/07/2024", "", "");
  press(history().Filtrer);
  EXPECT_THAT(printed([this] { press(history().Imprimer); }, *history().frxReport3), HasSubstr("119"));
}

TEST_F(HistoryTest, AnOrderIsTiedToAClientByCodeOrByName) {
  const auto invoiced = [this] {
    return row("select code_client, client, login from commande where n_commande=4");
  };
  store("update utilisateur set login='zz'");
  store("update commande set login='zz' where n_commande=4");
  press(history().Initialiser);
  const auto tie = [this](const std::function<void()>& steps) {
    standOn(4);
    during([] { history().FacturesClient->trigger(); }, steps);
    EXPECT_FALSE(DM->commande.Filtered());
  };

  tie([this] {
    type(fac_clF->DBEdit1, "K3\n");
    EXPECT_EQ(fac_clF->RzDBLookupComboBox1->Text(), "Zidi");
    press(fac_clF->Fermer);
  });
  EXPECT_EQ(invoiced(), "||zz") << "cancelled";

  tie([this] {
    type(fac_clF->DBEdit1, "K3\n");
    press(fac_clF->Enregistrer);
  });
  EXPECT_EQ(invoiced(), "K3|Zidi|ab12") << "the user who invoices becomes the order's";

  tie([this] {
    fac_clF->RzDBLookupComboBox1->Choose("Benali");
    EXPECT_EQ(fac_clF->DBEdit1->Text(), "K1") << "the first of that name";
    press(fac_clF->Enregistrer);
  });
  EXPECT_EQ(invoiced(), "K1|Benali|ab12");

  tie([this] {
    type(fac_clF->DBEdit1, "inconnu\n");
    press(fac_clF->Enregistrer);
  });
  EXPECT_EQ(invoiced(), "inconnu||ab12");
}

TEST_F(HistoryTest, TheGridDeletesARowAloneAndAsksBefore) {
  standOn(3);
  history().DBGrid1->SetFocus();
  for (const bool yes : {false, true}) {
    answer(yes);
    pressKey(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_THAT(asked(), ElementsAre("confirmation: voulez-vous vraiment supprimer"));
    EXPECT_EQ(shown(), yes ? "1 2 4 5" : "1 2 3 4 5");
  }
  EXPECT_EQ(row("select count(*) from commande") + row("select count(*) from relation_commande"), "45");
}

TEST_F(HistoryTest, DeletingAnOrderGivesNothingBack) {
  DM->relation_commande.Reopen();
  standOn(3);
  EXPECT_FALSE(history().Supprimer->isVisible());
  answer(false);
  history().Supprimer->Click();
  EXPECT_EQ(row("select count(*) from commande"), "5");
  answer(true);
  forgetWrites();
  history().Supprimer->Click();
  EXPECT_THAT(asked(), ElementsAre("confirmation: voulez-vous vraiment supprimer",
                                   "confirmation: voulez-vous vraiment supprimer"));
  EXPECT_THAT(writes(), ElementsAre("erase relation_commande", "erase commande"));
  EXPECT_EQ(row("select count(*) from relation_commande where n_commande=3"), "0");
  EXPECT_EQ(stockOf("Café"), "10");
}

}  // namespace
}  // namespace tavoline
