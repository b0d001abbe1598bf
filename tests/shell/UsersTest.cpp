#include <QtGui/QImage>

#include "shell/Configuration_utlisateurU.h"
#include "shell/ShellTest.h"
#include "shell/utilisateurUU.h"

namespace tavoline {
namespace {

class UsersTest : public ShellTest {
 protected:
  void SetUp() override {
    open();
    logIn("boss", "1");
    at.tap(MenuF->AdvSmoothButton2);
  }
  static void fill(const char* login, const char* name, const char* firstName) {
    utilisateurFF->RzDBEdit9->Text(login);
    utilisateurFF->RzDBEdit1->Text(name);
    utilisateurFF->RzDBEdit2->Text(firstName);
  }
  std::string logins() {
    return at.value("select group_concat(login, ' ') from (select login from utilisateur order by rid)");
  }
  static bool red(const QWidget* input) { return input->property("red").toBool(); }
  static bool menuUsable() { return MenuF->RzGroupBar2->isEnabled(); }
};

TEST_F(UsersTest, ANewAccountIsSavedAndLogsInWithoutPassword) {
  at.tap(Configuration_utlisateurF->Ajouter);
  EXPECT_TRUE(utilisateurFF->isVisible());
  EXPECT_FALSE(menuUsable());
  fill("lina", "Saadi", "Lina");
  utilisateurFF->RzDBComboBox1->Text("User");
  utilisateurFF->RzDBCheckBox1->setChecked(true);
  at.tap(utilisateurFF->Enregistrer);
  EXPECT_EQ(logins(), "boss kara omar lina");
  EXPECT_EQ(at.value("select nom || prenom || role from utilisateur where login='lina' and mot_pase is null"),
            "SaadiLinaUser");
  EXPECT_FALSE(utilisateurFF->isVisible());
  EXPECT_TRUE(menuUsable());
  EXPECT_EQ(DM->utilisateur.RecordCount(), 4u);

  logIn("lina", "");
  EXPECT_EQ(MenuF->DBText5->Caption(), "lina");
}

TEST_F(UsersTest, AnAccountIsChanged) {
  ASSERT_TRUE(DM->utilisateur.Locate("login", "kara"));
  at.tap(Configuration_utlisateurF->Modifier);
  EXPECT_EQ(utilisateurFF->RzDBEdit9->Text() + utilisateurFF->RzDBEdit1->Text(), "karaKaraoui");
  EXPECT_EQ(utilisateurFF->RzDBEdit3->echoMode(), QLineEdit::Password);
  EXPECT_FALSE(menuUsable());
  utilisateurFF->RzDBEdit3->Text("55");
  utilisateurFF->RzDBComboBox1->Text("User");
  at.tap(utilisateurFF->Enregistrer);
  EXPECT_EQ(at.value("select mot_pase || role from utilisateur where login='kara'"), "55User");
  EXPECT_EQ(at.value("select group_concat(mot_pase) from utilisateur"), "1,55,3");
}

TEST_F(UsersTest, AMissingNamePaintsAllThreeRedAndKeepsTheEntryOpen) {
  const struct {
    const char *login, *name, *firstName;
  } cases[] = {{"", "Saadi", "Lina"}, {"lina", "", "Lina"}, {"lina", "Saadi", ""}};
  at.tap(Configuration_utlisateurF->Ajouter);
  for (const auto& [login, name, firstName] : cases) {
    fill(login, name, firstName);
    saying("veuillez saisir les champs obligatoire", [&] { at.tap(utilisateurFF->Enregistrer); });
    EXPECT_TRUE(red(utilisateurFF->RzDBEdit9) && red(utilisateurFF->RzDBEdit1) &&
                red(utilisateurFF->RzDBEdit2));
    EXPECT_FALSE(red(utilisateurFF->RzDBEdit3));
    EXPECT_TRUE(utilisateurFF->isVisible());
    EXPECT_EQ(DM->utilisateur.State(), DatasetState::Insert);
  }
  fill("lina", "Saadi", "  ");  // blanks are a name
  at.tap(utilisateurFF->Enregistrer);
  EXPECT_EQ(logins(), "boss kara omar lina");
  EXPECT_FALSE(red(utilisateurFF->RzDBEdit9) || red(utilisateurFF->RzDBEdit1) ||
               red(utilisateurFF->RzDBEdit2));
}

TEST_F(UsersTest, AnyWayOutReloadsTheList) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Fermer", [&] { at.tap(utilisateurFF->Fermer); }},
      {"the window's own close", [] { utilisateurFF->close(); }}};
  for (const auto& [way, leave] : ways) {
    at.tap(Configuration_utlisateurF->Ajouter);
    fill("lina", "Saadi", "Lina");
    at.sql("insert into utilisateur (login) values ('" + std::string(way).substr(0, 4) + "')");
    leave();
    EXPECT_FALSE(utilisateurFF->isVisible()) << way;
    EXPECT_EQ(DM->utilisateur.State(), DatasetState::Browse) << way;
    EXPECT_TRUE(DM->utilisateur.Locate("login", std::string(way).substr(0, 4))) << way;
    EXPECT_EQ(menuUsable(), std::string(way) == "Fermer");
    MenuF->Actualiser1->trigger();
  }
  EXPECT_EQ(at.value("select count(*) from utilisateur where login='lina'"), "0");
}

TEST_F(UsersTest, ADeletionIsAskedForAndTestsNothing) {
  at.sql("insert into acce_caisse (id_caisse, login, general) values ('C001', 'boss', 'NON')");
  DM->utilisateur.First();
  at.answers({{"voulez-vous vraiment supprimer", "Non"}});
  at.tap(Configuration_utlisateurF->Supprimer);
  EXPECT_THAT(at.titles(), testing::ElementsAre("confirmation"));
  EXPECT_EQ(logins(), "boss kara omar");
  at.answers({{"voulez-vous vraiment supprimer", "Oui"}});
  at.tap(Configuration_utlisateurF->Supprimer);
  EXPECT_EQ(logins(), "kara omar") << "the last Admin, and logged in";
  EXPECT_EQ(at.value("select count(*) from acce_caisse"), "1");
  EXPECT_EQ(MenuF->DBText5->Caption(), "boss");

  at.sql("delete from utilisateur");
  DM->utilisateur.Reopen();
  saying(nullptr, [&] { at.tap(Configuration_utlisateurF->Supprimer); });
}

TEST_F(UsersTest, QuitterGivesUpWhatWasBegun) {
  at.tap(Configuration_utlisateurF->Ajouter);
  at.tap(Configuration_utlisateurF->Quitter);
  EXPECT_EQ(DM->utilisateur.State(), DatasetState::Browse);
  EXPECT_FALSE(Configuration_utlisateurF->Visible());
}

TEST_F(UsersTest, APictureComesFromAFile) {
  at.tap(Configuration_utlisateurF->Modifier);
  QImage(4, 4, QImage::Format_RGB32).save("portrait.png");
  at.answers({{"image", "portrait.png"}, {"image", ""}});  // the second time the user gives up
  at.tap(utilisateurFF->InsertImage);
  at.tap(utilisateurFF->InsertImage);
  at.tap(utilisateurFF->Enregistrer);
  EXPECT_EQ(at.value("select count(*) from utilisateur where length(image) > 0"), "1");
}

}  // namespace
}  // namespace tavoline
