// What a transcript cannot tell: the way data are reopened, the timer, and the eye button of a password.

#include <QtTest/QTest>

#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/Session.h"
#include "toolkit/controls/Button.h"

namespace tavoline {
namespace {

class MenuTest : public testing::Test {
 protected:
  MenuTest() {
    session.play(
        "sql insert into utilisateur (login, mot_pase, role) values ('boss', '1', 'Admin')\n"
        "sql insert into Table_ (ID_table, etat) values (1, 'OFF')\n"
        "start");
  }

  Session session;
};

// Which ones, and in which order: each in turn is made to fail, and the ones before it must be the ones
// reopened.
TEST_F(MenuTest, ActualiserReopensInOrderAndStopsAtAFailure) {
  session.play("login boss 1");
  const std::vector<std::string> order = test::words(
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
    EXPECT_THAT(session.play("tap Actualiser1"), testing::HasSubstr("nowhere"));
    std::vector<std::string> reopened;
    for (const std::string& other : order) {
      if (DM->Find(other)->Active()) reopened.push_back(other);
    }
    EXPECT_EQ(reopened, before) << name;
    failing->SQL(statement);
    before.push_back(name);
  }
}

TEST_F(MenuTest, TheStripSaysWhetherAnotherWorkstationIsAtTheDeskOfTheOneWhoLogsIn) {
  session.play(
      "sql insert into caisse (ID_caise, nom_caisse, general) values (3, 'Bar', 'NON')\n"
      "sql insert into acce_caisse (id_caisse, login, general) values (3, 'boss', 'NON')\n"
      "reopen acce_caisse");
  const auto other = Store::open(TDM::ConnectionString);
  for (const bool there : {true, false}) {
    other->announce(there ? "caisse 3" : "");
    session.play("login boss 1");
    EXPECT_EQ(MenuF->DBText4->Caption(), "3");
    EXPECT_EQ(MenuF->DeskElsewhere->isVisible(), there);
    session.play("tap ChangerUtilisateur1");
    EXPECT_EQ(other->announce("caisse 3"), 0U) << "a locked workstation is at no desk";
  }
}

TEST_F(MenuTest, TheTimerReadsTheTablesAnewWhileTheMapIsUpAndNoOrderIsOpen) {
  EXPECT_EQ(MenuF->Timer1->interval(), 9000);
  const struct {
    const char *map, *order;
    bool redraws;
  } cases[] = {{"", "", false}, {"Active", "", true}, {"Active", "Active", false}, {"", "Active", false}};
  auto* redraw = Forms::control<Button>("commandeF", "RzButton1");
  int redrawn = 0, written = 0;
  redraw->OnClick = [&] { ++redrawn; };
  for (const auto& [mapMark, orderMark, redraws] : cases) {
    SCOPED_TRACE(std::string(mapMark) + "/" + orderMark);
    MenuF->Label1->Caption(mapMark);
    MenuF->Label2->Caption(orderMark);
    const std::string before = DM->Table_["etat"].text(), now = "E" + std::to_string(++written);
    session.at.sql("update Table_ set etat='" + now + "'");
    redrawn = 0;
    QMetaObject::invokeMethod(MenuF->Timer1, "timeout");
    EXPECT_EQ(redrawn, redraws ? 1 : 0);
    EXPECT_EQ(DM->Table_["etat"].text(), redraws ? now : before);
    EXPECT_TRUE(MenuF->Timer1->isActive());
  }
}

// Folding is for the eyes: a driver finds every entry as it was.
TEST_F(MenuTest, TheColumnIsFoldedWhileAScreenKeepsItDisabledAndMarksTheScreenOnTop) {
  EXPECT_FALSE(MenuF->RzGroupBar2->folded()) << "behind the login";
  session.play("login boss 1\ntap AdvSmoothButton1");
  EXPECT_TRUE(MenuF->AdvSmoothButton1->here());
  const std::string before = session.play("show AdvSmoothButton1 AdvSmoothButton3 AdvSmoothButton6");
  MenuF->RzGroupBar2->setEnabled(false);
  session.at.settle();
  EXPECT_LE(MenuF->RzGroupBar2->width(), 64);
  EXPECT_GE(MenuF->AdvSmoothButton1->width(), MenuF->AdvSmoothButton1->iconSize().width());
  MenuF->RzGroupBar2->setEnabled(true);
  session.at.settle();
  EXPECT_EQ(MenuF->RzGroupBar2->width(), 252);
  EXPECT_EQ(session.play("show AdvSmoothButton1 AdvSmoothButton3 AdvSmoothButton6"), before);
  session.play("tap liste_commandeF.Fermer");
  EXPECT_FALSE(MenuF->AdvSmoothButton1->here());
}

TEST_F(MenuTest, APasswordIsSeenFromTheReleaseUntilTheButtonIsLeft) {
  session.play("set LoginF.RzEdit2 boss\ntap LoginF.RzBitBtn4");
  const std::pair<Button*, Edit*> pairs[] = {{LoginF->RzBitBtn6, LoginF->RzEdit1},
                                             {LoginF->RzBitBtn7, LoginF->RzEdit4}};
  for (const auto& [button, edit] : pairs) {
    EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
    QTest::mousePress(button, Qt::LeftButton);
    EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
    QTest::mouseRelease(button, Qt::LeftButton);
    EXPECT_EQ(edit->echoMode(), QLineEdit::Normal);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(button, &leave);
    EXPECT_EQ(edit->echoMode(), QLineEdit::Password);
  }
}

}  // namespace
}  // namespace tavoline
