#include <QtTest/QTest>

#include "shell/ShellTest.h"

namespace tavoline {
namespace {

const char* const kRefused = "mot de pase invalide !";

class LoginTest : public ShellTest {
 protected:
  static bool nameShown() {
    return LoginF->DBText1->isVisible() && LoginF->DBText2->isVisible() && LoginF->DBText3->isVisible();
  }
  static bool changeShown() {
    return LoginF->RzLabel3->isVisible() || LoginF->RzEdit4->isVisible() || LoginF->RzBitBtn7->isVisible() ||
           LoginF->RzBitBtn5->isVisible();
  }
  std::string session(const char* column) {
    return at.value(std::string("select ") + column + " from operation order by rid desc limit 1");
  }
};

TEST_F(LoginTest, StartsOverADisabledMenu) {
  open();
  EXPECT_TRUE(LoginF->isVisible());
  EXPECT_TRUE(LoginF->windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit2);
  EXPECT_FALSE(LoginF->RzBitBtn2->isEnabled());
  EXPECT_FALSE(LoginF->RzBitBtn4->isVisible() || changeShown() || nameShown());
  EXPECT_TRUE(MenuF->isVisible());
  EXPECT_FALSE(MenuF->FICHIER1->isEnabled() || MenuF->Apropos1->isEnabled() ||
               MenuF->RzSplitter1->isEnabled());
}

TEST_F(LoginTest, ACodeIsAcceptedWithItsLastCharacter) {
  open();
  for (const char* key : {"k", "a", "r"}) {
    at.type(key);
    EXPECT_FALSE(LoginF->RzBitBtn2->isEnabled()) << LoginF->RzEdit2->Text();
    EXPECT_FALSE(nameShown());
    EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit2);
  }
  at.type("a");
  EXPECT_TRUE(LoginF->RzBitBtn2->isEnabled());
  EXPECT_TRUE(LoginF->RzBitBtn4->isVisible() && LoginF->RzBitBtn4->isEnabled());
  EXPECT_TRUE(nameShown());
  EXPECT_EQ(LoginF->DBText1->Caption() + " " + LoginF->DBText2->Caption() + " " + LoginF->DBText3->Caption(),
            "Karaoui Nadir KeyUser");
  EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit1);

  type(LoginF->RzEdit2, "\b");
  EXPECT_FALSE(LoginF->RzBitBtn2->isEnabled() || LoginF->RzBitBtn4->isVisible() || nameShown());
}

TEST_F(LoginTest, OnlyTheFirstMatchCountsAndItsCase) {
  at.sql(
      "insert into utilisateur (login, role) values ('abc', 'User'), ('ab', 'User'), ('xy', 'User'), ('xyz', "
      "'User')");
  open();
  const struct {
    const char* typed;
    bool accepted;
  } cases[] = {{"KARA", false}, {"kara", true}, {"ab", false}, {"abc", true},   {"xy", true},
               {"xyz", true},   {"%", false},   {"", false},   {"karaa", false}};
  for (const auto& [typed, accepted] : cases) {
    LoginF->RzEdit2->Text(typed);
    EXPECT_EQ(LoginF->RzBitBtn2->isEnabled(), accepted) << typed;
  }
}

TEST_F(LoginTest, EnterWalksFromTheLoginToThePasswordAndIn) {
  open();
  at.type("om\n");
  EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit1);
  saying(kRefused, [&] { at.type("\n"); });  // the block of the first match, which is not the whole code

  LoginF->RzEdit2->Text("nobody");
  saying(nullptr, [&] { at.type("\n"); });

  LoginF->RzEdit2->Text("omar");
  type(LoginF->RzEdit1, "3\n");
  EXPECT_EQ(session("code_utilisateur"), "omar");
}

TEST_F(LoginTest, ALoginWritesTheSession) {
  open();
  logIn("boss", "1");
  EXPECT_EQ(at.value("select n_ || code_utilisateur || nom || prenom || fonction from operation"),
            "1bossAmraniLilaAdmin");
  EXPECT_EQ(at.value("select count(*) from operation where id_caisse_active is null and date_sortie is null"),
            "1");

  EXPECT_FALSE(LoginF->isVisible());
  EXPECT_FALSE(LoginF->windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_EQ(LoginF->RzEdit2->Text() + LoginF->RzEdit1->Text(), "");
  EXPECT_FALSE(LoginF->RzBitBtn2->isEnabled());
  EXPECT_TRUE(MenuF->FICHIER1->isEnabled() && MenuF->Apropos1->isEnabled() &&
              MenuF->RzSplitter1->isEnabled());
  EXPECT_EQ(MenuF->DBText1->Caption() + MenuF->DBText2->Caption() + MenuF->DBText3->Caption(),
            "AmraniLilaAdmin");
  EXPECT_EQ(MenuF->DBText5->Caption(), "boss");
  EXPECT_EQ(DM->utilisateur.RecordCount(), 3u);
  EXPECT_FALSE(DM->utilisateur.Filtered());
}

TEST_F(LoginTest, OneOrdinaryDeskIsTakenAtOnce) {
  at.sql(
      "insert into acce_caisse (id_caisse, login, general) values ('C001', 'boss', 'NON'), ('C002', 'kara', "
      "'NON'), "
      "('C003', 'kara', 'NON'), ('C004', 'omar', 'OUI')");
  open();
  const struct {
    const char *login, *password, *desk;
  } cases[] = {{"boss", "1", "C001"}, {"kara", "2", ""}, {"omar", "3", ""}};
  for (const auto& [login, password, desk] : cases) {
    logIn(login, password);
    EXPECT_EQ(session("code_utilisateur"), login);
    EXPECT_EQ(session("id_caisse_active"), desk) << login;
    EXPECT_EQ(MenuF->DBText4->Caption(), desk) << login;
    EXPECT_EQ(DM->Count_accee.Filter(), std::string("login='") + login + "'");
    EXPECT_TRUE(DM->Count_accee.Filtered());
    EXPECT_FALSE(DM->acce_caisse.Filtered());
  }
}

// The other roles number from the last time the highest number was asked, which is the start or an "Admin".
TEST_F(LoginTest, OnlyAnAdminNumbersAfresh) {
  at.sql("insert into operation (n_, code_utilisateur) values (41, 'boss')");
  open();
  const struct {
    const char *login, *password, *number;
  } cases[] = {{"kara", "2", "42"},
               {"omar", "3", "42"},
               {"boss", "1", "43"},
               {"kara", "2", "43"},
               {"boss", "1", "44"}};
  for (const auto& [login, password, number] : cases) {
    logIn(login, password);
    EXPECT_EQ(session("n_"), number) << login;
  }
}

TEST_F(LoginTest, AWrongPasswordKeepsTheFieldsAndTheFilter) {
  open();
  saying(kRefused, [&] { logIn("kara", "22"); });
  EXPECT_EQ(LoginF->RzEdit2->Text() + "/" + LoginF->RzEdit1->Text(), "kara/22");
  EXPECT_TRUE(DM->utilisateur.Filtered());
  EXPECT_TRUE(LoginF->isVisible());
  EXPECT_EQ(at.value("select count(*) from operation"), "0");

  type(LoginF->RzEdit1, "\b");
  at.tap(LoginF->RzBitBtn2);
  EXPECT_EQ(session("code_utilisateur"), "kara");
}

TEST_F(LoginTest, AnAccountWithoutPasswordIsEnteredWithoutOne) {
  at.sql(
      "insert into utilisateur (login, mot_pase, role) values ('nul', null, 'User'), ('vide', '', 'User')");
  open();
  for (const char* login : {"nul", "vide"}) {
    saying(kRefused, [&, login = login] { logIn(login, "x"); });
    EXPECT_TRUE(LoginF->isVisible()) << login;
    LoginF->RzEdit1->Clear();
    at.tap(LoginF->RzBitBtn2);
    EXPECT_EQ(session("code_utilisateur"), login);
  }
}

TEST_F(LoginTest, WithoutAKnownRoleNothingHappens) {
  at.sql(
      "insert into utilisateur (login, mot_pase, role) values ('chef', '9', 'admin'), ('rien', '9', null)");
  open();
  for (const char* login : {"chef", "rien"}) {
    logIn(login, "wrong");
    EXPECT_TRUE(LoginF->RzBitBtn2->isEnabled()) << login;
    EXPECT_TRUE(LoginF->isVisible()) << login;
    LoginF->RzEdit2->Clear();
    LoginF->RzEdit1->Clear();
  }
}

// After a login the tests of the later roles go on with the first user of the table and the emptied fields.
TEST_F(LoginTest, ALaterRoleOfTheFirstUserRefusesOverTheOpenMenu) {
  const struct {
    const char *first, *login, *password;
    bool refused;
  } cases[] = {
      {"User", "boss", "1", true},    {"User", "kara", "2", true},     {"User", "omar", "3", false},
      {"KeyUser", "boss", "1", true}, {"KeyUser", "kara", "2", false}, {"KeyUser", "omar", "3", false},
      {"Admin", "boss", "1", false},  {"Admin", "omar", "3", false},   {"", "boss", "1", false}};
  open();
  for (const auto& [first, login, password, refused] : cases) {
    at.sql("delete from utilisateur");
    at.sql(std::string("insert into utilisateur (login, role, mot_pase) values ('aaa', '") + first +
           "', ''), ('boss', 'Admin', '1'), ('kara', 'KeyUser', '2'), ('omar', 'User', '3')");
    saying(refused ? kRefused : nullptr, [&, login = login, password = password] { logIn(login, password); });
    EXPECT_TRUE(MenuF->RzSplitter1->isEnabled());
    EXPECT_EQ(session("code_utilisateur"), login);
    EXPECT_EQ(DM->utilisateur.Eof(), refused);  // left on the filter of an empty code
    MenuF->ChangerUtilisateur1->trigger();
    type(LoginF->RzEdit2, "o");
    EXPECT_FALSE(DM->utilisateur.Filtered());
    LoginF->RzEdit2->Clear();
  }
}

TEST_F(LoginTest, AnApostropheIsTheStoresErrorInABox) {
  open();
  at.answers({{testing::Not(testing::IsEmpty())}});
  at.type("l'");
  EXPECT_FALSE(LoginF->RzBitBtn2->isEnabled());
  LoginF->RzEdit2->Text("omar");
  EXPECT_TRUE(LoginF->RzBitBtn2->isEnabled());
}

TEST_F(LoginTest, AnnulerEmptiesTheFieldsAndGoesToThePassword) {
  open();
  LoginF->RzEdit2->Text("kara");
  type(LoginF->RzEdit1, "5");
  at.tap(LoginF->RzBitBtn4);
  ASSERT_TRUE(changeShown());
  type(LoginF->RzEdit4, "7");
  LoginF->RzEdit2->SetFocus();
  at.tap(LoginF->RzBitBtn1);
  EXPECT_EQ(LoginF->RzEdit2->Text() + LoginF->RzEdit1->Text() + LoginF->RzEdit4->Text(), "");
  EXPECT_FALSE(changeShown() || nameShown() || LoginF->RzBitBtn2->isEnabled());
  EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit1);
}

TEST_F(LoginTest, DeconnexionLeavesADisabledMenu) {
  open();
  at.tap(LoginF->RzBitBtn3);
  EXPECT_FALSE(LoginF->isVisible());
  EXPECT_FALSE(MenuF->FICHIER1->isEnabled() || MenuF->RzSplitter1->isEnabled());
  EXPECT_EQ(at.value("select count(*) from operation"), "0");
}

TEST_F(LoginTest, ThePasswordIsChangedByWhoKnowsTheOldOne) {
  const struct {
    const char *old, *wanted, *stored, *message;
    bool done;
  } cases[] = {
      {"9", "77", "2", "Ancien mot de pase invalide !", false},
      {"2", "", "2", nullptr, false},  // silently not taken
      {"2", "77", "77", nullptr, true},
      {"2", "78", "77", "Ancien mot de pase invalide !", false},
      {"77", "78", "78", nullptr, true},
  };
  open();
  LoginF->RzEdit2->Text("kara");
  at.tap(LoginF->RzBitBtn4);
  for (const auto& [old, wanted, stored, message, done] : cases) {
    at.tap(LoginF->RzBitBtn4);
    LoginF->RzEdit1->Text(old);
    LoginF->RzEdit4->Text(wanted);
    saying(message, [&] { at.tap(LoginF->RzBitBtn5); });
    EXPECT_EQ(at.value("select mot_pase from utilisateur where login='kara'"), stored);
    EXPECT_EQ(changeShown(), !done);
    EXPECT_EQ(LoginF->RzEdit1->Text() + "/" + LoginF->RzEdit4->Text(),
              done ? "/" : old + std::string("/") + wanted);
    EXPECT_TRUE(DM->utilisateur.Filtered());
  }
  EXPECT_EQ(LoginF->focusWidget(), LoginF->RzEdit1);
  EXPECT_EQ(at.value("select group_concat(mot_pase) from utilisateur where login<>'kara'"), "1,3");
}

TEST_F(LoginTest, APasswordIsSeenFromTheReleaseUntilTheButtonIsLeft) {
  open();
  LoginF->RzEdit2->Text("kara");
  at.tap(LoginF->RzBitBtn4);
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

TEST_F(LoginTest, TheKeypadTypesIntoTheFocusedField) {
  at.sql("insert into utilisateur (login, mot_pase, role) values ('1234', '56', 'User')");
  open();
  const auto press = [&](const char* key) {
    at.tap(LoginF->AdvTouchKeyboard1->findChild<QWidget*>(QStringLiteral("key") + QString::fromUtf8(key)));
  };
  for (const char* key : {"1", "2", "3", "5", "Back", "4", "5", "6", "Enter"}) press(key);
  EXPECT_EQ(session("code_utilisateur"), "1234");
}

}  // namespace
}  // namespace tavoline
