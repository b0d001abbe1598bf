#include "cash/Aff_caisseU.h"
#include "cash/C_caisseU.h"
#include "cash/acc_caisseU.h"
#include "cash/liste_aff_caisseU.h"
#include "cash/liste_caisseU.h"
#include "shell/BackOffice.h"

namespace tavoline {
namespace {

class Desks : public BackOfficeTest {
 protected:
  void start() { startWith(liste_caisseF, C_caisseF, Aff_caisseF, liste_aff_caisseF, acc_caisseF); }
  void addDesks(int count) {
    for (int i = 1; i <= count; ++i)
      ws.sql("insert into caisse(ID_caise, nom_caisse, solde, general, \"select\") values ('C00" +
             std::to_string(i) + "', 'Caisse " + std::to_string(i) + "', 0, 'NON', 'OUI')");
  }
};

TEST_F(Desks, CodesCountOnWithoutAFixedWidth) {
  start();
  open(liste_caisseF);
  ws.during([&] { ws.tap("liste_caisseF.AdvSmoothButton1"); },
            [&] {
              EXPECT_EQ(ws.text("C_caisseF.DBEdit1"), "C001");
              EXPECT_EQ(ws.text("C_caisseF.DBEdit3"), "0");
              EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
              C_caisseF->DBEdit2->SetFocus();
              ws.settle();
              ws.type("Comptoir");
              ws.tap("C_caisseF.DBCheckBox1");
              ws.tap("C_caisseF.Enregistrer");
            });
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(ws.sql("select ID_caise, nom_caisse, solde, general, \"select\" from caisse"),
            (Workstation::Rows{{"C001", "Comptoir", "0.0", "OUI", "OUI"}}));
  EXPECT_NE(ws.value("select date_creation from caisse"), "");

  ws.sql("delete from caisse");
  addDesks(9);
  DM->Caisse.Reopen();
  ws.during([&] { ws.tap("liste_caisseF.AdvSmoothButton1"); },
            [&] {
              EXPECT_EQ(ws.text("C_caisseF.DBEdit1"), "C0010");
              ws.tap("C_caisseF.Fermer");
            });
  EXPECT_EQ(ws.value("select count(*) from caisse"), "9");

  // After a deletion a code comes back.
  ws.sql("delete from caisse where ID_caise = 'C003'");
  ws.during([&] { ws.tap("liste_caisseF.AdvSmoothButton1"); },
            [&] {
              EXPECT_EQ(ws.text("C_caisseF.DBEdit1"), "C009");
              ws.tap("C_caisseF.Fermer");
            });
}

TEST_F(Desks, ADeskWithAssignmentsIsKept) {
  addDesks(2);
  ws.sql("insert into acce_caisse(id_caisse, login, general) values ('C001', '10', 'NON')");
  start();
  open(liste_caisseF);
  ws.answers(
      {{"Vous devez d'abord supprimer l'affectation des caisses"}, {kDelete, "Non"}, {kDelete, "Oui"}});
  ws.tap("liste_caisseF.AdvSmoothButton9");
  EXPECT_FALSE(DM->acce_caisse.Filtered());
  ws.tap("liste_caisseF.AdvSmoothButton6");
  ws.tap("liste_caisseF.AdvSmoothButton9");
  EXPECT_EQ(ws.value("select count(*) from caisse"), "2");
  ws.tap("liste_caisseF.AdvSmoothButton9");
  EXPECT_EQ(ws.sql("select ID_caise from caisse"), (Workstation::Rows{{"C001"}}));
  EXPECT_FALSE(DM->acce_caisse.Filtered());

  // Whether there is a desk at all is not looked at before the question.
  ws.sql("delete from caisse");
  DM->Caisse.Reopen();
  ws.answers({{kDelete, "Non"}});
  ws.tap("liste_caisseF.AdvSmoothButton9");
}

TEST_F(Desks, AnAssignmentCopiesTheDeskAndTheUserAsTheyAre) {
  addDesks(1);
  ws.sql(
      "insert into caisse(ID_caise, nom_caisse, general, \"select\") values ('C002', 'Maison', 'OUI', "
      "'OUI')");
  ws.sql(
      "insert into utilisateur(login, nom, role) values ('31', 'Mansouri', 'User'), ('32', 'Cherif', "
      "'User')");
  start();
  open(liste_aff_caisseF);
  ws.during([&] { ws.tap("liste_aff_caisseF.RzShapeButton3"); },
            [&] {
              Aff_caisseF->RzDBLookupComboBox1->Choose("C002");
              Aff_caisseF->RzDBLookupComboBox2->Choose("32");
              EXPECT_EQ(ws.text("Aff_caisseF.DBEdit6"), "Maison");
              EXPECT_EQ(ws.text("Aff_caisseF.DBEdit5"), "Cherif");
              ws.tap("Aff_caisseF.Enregistrer");
            });
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  const Workstation::Rows copied = {{"C002", "Maison", "32", "Cherif", "OUI"}};
  const std::string copies = "select id_caisse, nom_caisse, login, nom_utilisateur, general from acce_caisse";
  EXPECT_EQ(ws.sql(copies), copied);
  EXPECT_NE(ws.value("select date_affectaion from acce_caisse"), "");
  DM->Count_accee.Reopen();
  EXPECT_TRUE(DM->Count_accee.Eof()) << "the house desk does not count";

  // The copies do not follow the desk.
  DM->Caisse.Last();
  DM->Caisse.Edit();
  DM->Caisse["general"] = "NON";
  DM->Caisse["nom_caisse"] = "Autre";
  DM->Caisse.Post();
  EXPECT_EQ(ws.sql(copies), copied);

  // Closing the window drops the entry and frees the menu.
  ws.during([&] { ws.tap("liste_aff_caisseF.RzShapeButton4"); },
            [&] {
              Aff_caisseF->RzDBLookupComboBox1->Choose("C001");
              Aff_caisseF->close();
            });
  EXPECT_EQ(ws.sql(copies), copied);
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
}

TEST_F(Desks, TheDeskOfTheDayIsLeftOnlyByAnAnswer) {
  addDesks(2);
  ws.sql(
      "insert into acce_caisse(id_caisse, nom_caisse, login, general) values ('C001', 'Caisse 1', '10', "
      "'NON'),"
      " ('C002', 'Caisse 2', '10', 'NON'), ('C009', 'Maison', '10', 'OUI'), ('C001', 'Caisse 1', '20', "
      "'NON')");
  ws.sql("insert into Table_(ID_table, \"table\") values (1, 'T1')");
  ws.sql("insert into operation(n_, code_utilisateur) values (1, '10')");
  start();
  ws.during([&] { ws.tap("MenuF.AdvSmoothButton6"); },
            [&] {
              EXPECT_EQ(DM->acce_caisse.RecordCount(), 2u);
              ws.answers({{kMandatory}});
              ws.tap("acc_caisseF.Enregistrer");
              acc_caisseF->close();
              EXPECT_TRUE(acc_caisseF->Visible());
              acc_caisseF->RzDBLookupComboBox1->Choose("C002");
              ws.tap("acc_caisseF.Enregistrer");
            });
  EXPECT_EQ(ws.value("select id_caisse_active from operation"), "C002");
  EXPECT_FALSE(DM->acce_caisse.Filtered());
  EXPECT_EQ(ws.text("MenuF.DBText4"), "C002");
  ws.tap("MenuF.AdvSmoothButton6");  // asked once
  EXPECT_FALSE(acc_caisseF->Visible());
}

TEST_F(Desks, ABalanceTypedInTheListIsStoredAsItStands) {
  addDesks(2);
  start();
  open(liste_caisseF);
  DM->Caisse.Edit();
  DM->Caisse["solde"] = "1250,75";
  ws.tap("liste_caisseF.AdvSmoothButton5");  // leaving the row posts it
  EXPECT_EQ(ws.value("select solde from caisse where ID_caise = 'C001'"), "1250.75");
}

}  // namespace
}  // namespace tavoline
