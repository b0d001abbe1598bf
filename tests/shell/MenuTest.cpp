#include "shell/ShellTest.h"
#include "toolkit/controls/Button.h"

namespace tavoline {
namespace {

using testing::ElementsAre;

const char* const kNoDesk = "Merci de céer une ou plusieurs caisses et un caisse de maison ";

class MenuTest : public ShellTest {
 protected:
  void openAs(const char* login = "boss", const char* password = "1") {
    open();
    logIn(login, password);
  }
  void addDesk(const char* code, const char* general) {
    at.sql(std::string("insert into caisse (ID_caise, nom_caisse, solde, general, \"select\") values ('") +
           code + "', 'Caisse', 0, '" + general + "', 'OUI')");
  }
  void addTable() {
    at.sql("insert into Table_ (ID_table, \"table\", etat, control) values (1, 'T1', 'OFF', 'close')");
  }
  void assign(const char* desk, const char* login, const char* general = "NON") {
    at.sql(std::string("insert into acce_caisse (id_caisse, login, general) values ('") + desk + "', '" +
           login + "', '" + general + "')");
  }
  std::string lock() { return at.value("select control from Table_"); }
};

TEST_F(MenuTest, EveryEntryOpensItsScreen) {
  addDesk("C001", "NON");
  addTable();
  openAs();
  const struct {
    const char *screen, *opener;
    bool docked = true;
  } entries[] = {
      {"Liste_produitF", "AdvSmoothButton9"},
      {"liste_ClientF", "AdvSmoothButton7"},
      {"Liste_fournisseurF", "AdvSmoothButton8"},
      {"liste_facture_achatF", "AdvSmoothButton4"},
      {"liste_depenceF", "AdvSmoothButton5"},
      {"commandeF", "AdvSmoothButton6"},
      {"statF", "AdvSmoothButton3"},
      {"liste_commandeF", "AdvSmoothButton1"},
      {"Configuration_utlisateurF", "AdvSmoothButton2"},
      {"Liste_produitF", "Produit1"},
      {"Liste_fournisseurF", "Fournisseur1"},
      {"liste_ClientF", "Client1"},
      {"Liste_TypeF", "ypedeProduit1"},
      {"liste_tableF", "ListedesTable1"},
      {"liste_endroitF", "Endroit1"},
      {"TVAF", "ModifierTVA1", false},
      {"liste_caisseF", "CreationnouveauCaisse1"},
      {"liste_aff_caisseF", "AffctaiondeCaisse1"},
      {"liste_caiseF", "Caise1"},
      {"AproposF", "N2", false},
  };
  for (const auto& [screen, opener, docked] : entries) {
    std::unique_ptr<OtherScreen> other;
    if (!Forms::find(screen)) other = std::make_unique<OtherScreen>(screen);
    const TForm* form = Forms::find(screen);
    if (auto* action = MenuF->findChild<QAction*>(QString::fromLatin1(opener))) {
      action->trigger();
    } else {
      at.tap(MenuF->findChild<Button*>(QString::fromLatin1(opener)));
    }
    EXPECT_TRUE(form->Visible()) << opener;
    EXPECT_EQ(form->parentWidget(), docked ? MenuF->RzPanel4 : nullptr) << opener;
  }
}

TEST_F(MenuTest, AnEntryWithoutItsScreenDoesNothing) {
  addDesk("C001", "NON");
  addTable();
  openAs();
  for (QAction* entry : MenuF->FICHIER1->actions()) {
    if (!entry->menu() && entry != MenuF->Fermer1 && entry != MenuF->ChangerUtilisateur1) entry->trigger();
  }
  for (Button* button : MenuF->RzGroupBar2->findChildren<Button*>()) {
    if (button != MenuF->AdvSmoothButton2) at.tap(button);
  }
  EXPECT_EQ(MenuF->Label1->Caption(), "");
}

TEST_F(MenuTest, HiddenEntriesAreNotDrawnButKeepTheirShortcut) {
  open();
  OtherScreen articles("Liste_produitF"), suppliers("Liste_fournisseurF"), clients("liste_ClientF"),
      vat("TVAF");
  const auto pressAll = [&] {
    MenuF->activateWindow();
    at.settle();
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_F, Qt::Key_C, Qt::Key_T}) at.press(key, Qt::ControlModifier);
  };
  const auto opened = [&] {
    return std::vector<int>{articles.shown, suppliers.shown, clients.shown, vat.shown};
  };
  for (const QAction* hidden : {MenuF->Produit1, MenuF->Fournisseur1, MenuF->Client1}) {
    EXPECT_FALSE(MenuF->FICHIER1->actions().contains(const_cast<QAction*>(hidden)));
  }
  at.tap(LoginF->RzBitBtn3);
  pressAll();
  EXPECT_THAT(opened(), ElementsAre(0, 0, 0, 0)) << "nobody is logged in";
  logIn("omar", "3");
  pressAll();
  EXPECT_THAT(opened(), ElementsAre(0, 0, 0, 0)) << "not for this role";
  logIn("kara", "2");
  pressAll();
  EXPECT_THAT(opened(), ElementsAre(1, 1, 1, 1));
}

TEST_F(MenuTest, AnEmbeddedScreenClosesTheMapAndTheMapStaysOverOthers) {
  addDesk("C001", "NON");
  addTable();
  openAs();
  OtherScreen map("commandeF"), list("liste_commandeF");
  at.tap(MenuF->AdvSmoothButton6);
  EXPECT_EQ(MenuF->Label1->Caption(), "Active");
  EXPECT_FALSE(DM->Caisse.Filtered());
  at.tap(MenuF->AdvSmoothButton1);
  EXPECT_EQ(map.closed, 1);
  EXPECT_FALSE(map.Visible());
  at.tap(MenuF->AdvSmoothButton6);
  EXPECT_TRUE(list.Visible()) << "beneath the map, not closed by it";
}

TEST_F(MenuTest, OrdinaryDesksAndTablesMustExist) {
  struct Case {
    bool house, ordinary, table;
    const char* opener;
    const char* message;  // null: the screen opens
    bool filterLeftOn;
  };
  const char *const journal = "Caise1", *const invoices = "AdvSmoothButton4",
                    *const orders = "AdvSmoothButton6", *const expenses = "AdvSmoothButton5";
  const char *const noTable = "Merci de céer une table !", *const noDeskAtAll = "Merci de céer une caisse";
  const Case cases[] = {
      {false, false, true, journal, kNoDesk, false},      {true, false, true, journal, kNoDesk, false},
      {true, false, true, invoices, kNoDesk, false},      {true, false, true, orders, kNoDesk, false},
      {true, false, false, orders, kNoDesk, false},       {true, false, true, expenses, nullptr, false},
      {false, false, true, expenses, noDeskAtAll, false}, {false, true, false, orders, noTable, true},
      {false, true, false, journal, nullptr, false},      {false, true, false, invoices, nullptr, false},
      {false, true, true, orders, nullptr, false},        {false, true, false, expenses, nullptr, false},
  };
  openAs();
  OtherScreen map("commandeF"), invoiceList("liste_facture_achatF"), expenseList("liste_depenceF"),
      closings("liste_caiseF");
  for (const Case& c : cases) {
    at.sql("delete from caisse");
    at.sql("delete from Table_");
    if (c.house) addDesk("C009", "OUI");
    if (c.ordinary) addDesk("C001", "NON");
    if (c.table) addTable();
    DM->Caisse.Filtered(false);
    DM->Caisse.Reopen();
    map.shown = invoiceList.shown = expenseList.shown = closings.shown = 0;
    saying(c.message, [&] {
      if (c.opener == journal) {
        MenuF->Caise1->trigger();
      } else {
        at.tap(MenuF->findChild<Button*>(QString::fromLatin1(c.opener)));
      }
    });
    const std::string where = std::string(c.opener) + (c.house ? " house" : "") + (c.ordinary ? " desk" : "");
    EXPECT_EQ(map.shown + invoiceList.shown + expenseList.shown + closings.shown, c.message ? 0 : 1) << where;
    EXPECT_EQ(DM->Caisse.Filtered(), c.filterLeftOn) << where;
    for (TForm* screen : {static_cast<TForm*>(&map), static_cast<TForm*>(&invoiceList),
                          static_cast<TForm*>(&expenseList), static_cast<TForm*>(&closings)}) {
      screen->Close();
    }
  }
}

TEST_F(MenuTest, SeveralDesksAreAskedForOnceASession) {
  addDesk("C001", "NON");
  addTable();
  assign("C001", "kara");
  assign("C002", "kara");
  assign("C009", "kara", "OUI");
  assign("C001", "boss");
  openAs("kara", "2");
  OtherScreen map("commandeF"), invoices("liste_facture_achatF"), choice("acc_caisseF");
  std::size_t offered = 0;
  choice.onShow = [&] {
    offered = DM->acce_caisse.RecordCount();
    EXPECT_EQ(choice.windowModality(), Qt::ApplicationModal);
    EXPECT_FALSE(invoices.Visible());
    DM->operation.Edit();
    DM->operation["id_caisse_active"] = "C002";
    DM->operation.Post();
    choice.Close();
  };
  at.tap(MenuF->AdvSmoothButton4);
  EXPECT_EQ(offered, 2u) << "the user's own ordinary desks";
  EXPECT_TRUE(invoices.Visible());
  at.tap(MenuF->AdvSmoothButton6);
  at.tap(MenuF->AdvSmoothButton4);
  EXPECT_EQ(choice.shown, 1);
  EXPECT_EQ(MenuF->DBText4->Caption(), "C002");
}

TEST_F(MenuTest, AnAssignmentMadeSinceTheLoginIsTakenOnTheWayToTheMapOnly) {
  addDesk("C001", "NON");
  addTable();
  openAs();
  OtherScreen map("commandeF"), invoices("liste_facture_achatF"), choice("acc_caisseF");
  assign("C001", "kara");  // first in the table: the row taken is whichever is current
  assign("C002", "boss");
  DM->acce_caisse.Reopen();
  at.tap(MenuF->AdvSmoothButton4);
  EXPECT_EQ(MenuF->DBText4->Caption(), "");
  at.tap(MenuF->AdvSmoothButton6);
  EXPECT_EQ(at.value("select id_caisse_active from operation"), "C001");
  EXPECT_TRUE(map.Visible());
  EXPECT_EQ(choice.shown, 0);
}

TEST_F(MenuTest, WithoutAssignmentTheMapOpensWithoutADesk) {
  addDesk("C001", "NON");
  addTable();
  openAs("omar", "3");
  OtherScreen map("commandeF");
  at.tap(MenuF->AdvSmoothButton6);
  EXPECT_TRUE(map.Visible());
  EXPECT_EQ(at.value("select count(*) from operation where id_caisse_active is null"), "1");
}

TEST_F(MenuTest, ActualiserUnlocksEnablesAndReopens) {
  addTable();
  openAs();
  MenuF->RzGroupBar2->setEnabled(false);
  at.sql("insert into client (code_client) values ('K1')");
  at.sql("insert into operation (n_) values (99)");
  at.sql("insert into type (code) values (5)");
  MenuF->Actualiser1->trigger();
  EXPECT_EQ(lock(), "open");
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(DM->Client.RecordCount(), 1u);
  EXPECT_EQ(DM->Table_["control"].text(), "open");
  EXPECT_EQ(DM->operation.RecordCount(), 1u) << "the session lives on its row";
  EXPECT_EQ(DM->op["op"].text() + DM->T_p["tp"].text(), "") << "run where they are needed";
}

// Which ones, and in which order: each in turn is made to fail, and the ones before it must be the ones
// reopened.
TEST_F(MenuTest, ActualiserReopensInOrderAndStopsAtAFailure) {
  openAs();
  const std::vector<std::string> order = words(
      "Article type_produit Fournisseur Client A TVA utilisateur Endroit Table_ T E commande C "
      "relation_commande relation_commande1 sum_commande imp_commande imp_facture_vente "
      "facture_achat F Achat counting imp_fac_achat Caise CS min last xx1 null4 xxx1 sum_x x1 x2 "
      "Caisse acce_caisse CSS Count_accee xx2 Null44 xxx3 sum_x2 x22 x33 lastt D Depence "
      "stat_caisse S_01 D_01 Calcul_dep best1 best2 sum_recette sum_depense");
  std::vector<std::string> before;
  for (const std::string& name : order) {
    for (Dataset* dataset : DM->Datasets()) dataset->Close();
    Dataset* failing = DM->Find(name);
    ASSERT_TRUE(failing) << name;
    const std::string statement = failing->SQL();
    failing->SQL("select * from nowhere");
    at.answers({{testing::HasSubstr("nowhere")}});
    MenuF->Actualiser1->trigger();
    std::vector<std::string> reopened;
    for (const std::string& other : order) {
      if (DM->Find(other)->Active()) reopened.push_back(other);
    }
    EXPECT_EQ(reopened, before) << name;
    failing->SQL(statement);
    before.push_back(name);
  }
}

TEST_F(MenuTest, ChangerUtilisateurClosesTheScreensAndKeepsTheData) {
  openAs();
  std::vector<std::unique_ptr<OtherScreen>> others;
  for (const char* name : {"Liste_produitF", "commandeF", "Commande_avnF", "acc_caisseF", "BestF"}) {
    others.push_back(std::make_unique<OtherScreen>(name));
    others.back()->Show();
  }
  OtherScreen counting("comptageF");  // not in the list
  counting.Show();
  DM->Endroit.Insert();
  MenuF->ChangerUtilisateur1->trigger();
  for (const auto& other : others) EXPECT_FALSE(other->Visible()) << other->objectName().toStdString();
  EXPECT_TRUE(counting.Visible());
  EXPECT_TRUE(LoginF->isVisible());
  EXPECT_FALSE(LoginF->windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_FALSE(MenuF->FICHIER1->isEnabled() || MenuF->Apropos1->isEnabled() ||
               MenuF->RzSplitter1->isEnabled());
  EXPECT_EQ(DM->Endroit.State(), DatasetState::Insert);
  EXPECT_EQ(at.value("select count(*) from operation where date_sortie is null"), "1");
}

TEST_F(MenuTest, TheTimerRedrawsTheMapWhileNoOrderIsOpen) {
  addTable();
  openAs();
  EXPECT_EQ(MenuF->Timer1->interval(), 9000);
  EXPECT_TRUE(MenuF->Timer1->isActive());
  OtherScreen map("commandeF");
  auto* redraw = new Button(&map);
  redraw->setObjectName("RzButton1");
  redraw->hide();
  int redrawn = 0;
  redraw->OnClick = [&] { ++redrawn; };
  const struct {
    const char *map, *order;
    bool redraws;
  } cases[] = {{"", "", false}, {"Active", "", true}, {"Active", "Active", false}, {"", "Active", false}};
  int written = 0;
  for (const auto& [mapMark, orderMark, redraws] : cases) {
    MenuF->Label1->Caption(mapMark);
    MenuF->Label2->Caption(orderMark);
    const std::string before = DM->Table_["etat"].text(), now = "E" + std::to_string(++written);
    at.sql("update Table_ set etat='" + now + "'");
    redrawn = 0;
    QMetaObject::invokeMethod(MenuF->Timer1, "timeout");
    EXPECT_EQ(redrawn, redraws ? 1 : 0) << mapMark << "/" << orderMark;
    EXPECT_EQ(DM->Table_["etat"].text(), redraws ? now : before) << mapMark << "/" << orderMark;
    EXPECT_TRUE(MenuF->Timer1->isActive());
  }
}

}  // namespace
}  // namespace tavoline
