#include "shell/LoginU.h"

#include "data/DMU.h"
#include "data/value/Text.h"
#include "shell/MenuU.h"
#include "shell/Rights.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TLoginF* LoginF = nullptr;

TLoginF::TLoginF() : TForm("LoginF") {
  setupUi(this);
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);

  RzEdit2->OnChange = [this] { RzEdit2Change(); };
  RzEdit2->OnEnter = [this] { RzEdit1->SetFocus(); };
  RzEdit1->OnEnter = [this] { RzBitBtn2Click(); };
  RzBitBtn1->OnClick = [this] { RzBitBtn1Click(); };
  RzBitBtn2->OnClick = [this] { RzBitBtn2Click(); };
  RzBitBtn3->OnClick = [this] { Close(); };
  RzBitBtn4->OnClick = [this] { RzBitBtn4Click(); };
  RzBitBtn5->OnClick = [this] { RzBitBtn5Click(); };
  reveals(RzBitBtn6, RzEdit1);
  reveals(RzBitBtn7, RzEdit4);
  Ready();
}

void TLoginF::FormShow() {
  RzEdit1->setEchoMode(QLineEdit::Password);  // a finger that revealed a password never leaves the button
  RzEdit4->setEchoMode(QLineEdit::Password);
  showPasswordChange(false);  // one that somebody began and left is not the next user's
  RzEdit4->Clear();
  RzEdit2->SetFocus();
}

// Typing the login. The first match alone counts, and it must be the whole code, case included.
void TLoginF::RzEdit2Change() {
  DM->utilisateur.Filtered(false);
  DM->utilisateur.Close();
  DM->utilisateur.SQL("select*from utilisateur");
  DM->utilisateur.Open();
  DM->utilisateur.Close();
  DM->utilisateur.SQL("select*from utilisateur where login like" + inBareQuotes(RzEdit2->Text() + "%"));
  DM->utilisateur.Open();

  const bool whole = DM->utilisateur["login"] == RzEdit2->Text();
  RzBitBtn4->setVisible(whole);
  RzBitBtn2->setEnabled(whole);
  RzBitBtn4->setEnabled(whole);
  if (whole) RzEdit1->SetFocus();
  for (DBText* text : {DBText1, DBText2, DBText3}) text->setVisible(whole);
}

// "Annuler             ": the focus goes to the password and not to the login.
void TLoginF::RzBitBtn1Click() {
  RzEdit2->Clear();
  RzEdit1->Clear();
  showPasswordChange(false);
  RzEdit4->Clear();
  RzEdit1->SetFocus();
}

// "OK", and Enter in the password. Three tests in sequence, each reading the role anew: after a login the
// next one reads it of the first user, and may refuse the emptied fields over the menu that is open already.
void TLoginF::RzBitBtn2Click() {
  for (const char* role : {"Admin", "KeyUser", "User"}) {
    if (DM->utilisateur["role"] == role) enterAs(role);
  }
}

void TLoginF::enterAs(const std::string& role) {
  DM->utilisateur.FilterBy("login=" + inBareQuotes(RzEdit2->Text()));
  if (!passwordMatches()) return ShowMessage("mot de pase invalide !");
  Close();
  setWindowFlag(Qt::WindowStaysOnTopHint, false);
  MenuF->FICHIER1->setEnabled(true);
  MenuF->Apropos1->setEnabled(true);
  MenuF->RzSplitter1->setEnabled(true);
  grantRights(*MenuF, role);
  if (auto* erase = Forms::control("Liste_produitF", "x7")) erase->setEnabled(false);

  if (role == "Admin") DM->op.Reopen();  // the other roles number from the last time `op` was run
  writeSession();
  RzEdit2->Clear();
  RzEdit1->Clear();
  DM->utilisateur.Filtered(false);
  DM->operation.Last();
  MenuF->AnnounceDesk();
  MenuF->Show();
}

void TLoginF::writeSession() {
  DM->operation.Open();
  DM->operation.Insert();
  DM->operation["n_"] = DBText4->Caption().empty() ? Value(1) : DM->op["op"] + 1;
  DM->operation["code_utilisateur"] = DM->utilisateur["login"];
  DM->operation["nom"] = DM->utilisateur["nom"];
  DM->operation["prenom"] = DM->utilisateur["prenom"];
  DM->operation["fonction"] = DM->utilisateur["role"];

  // One ordinary desk is taken at once; with none or several it is settled on the way to a work screen.
  const std::string ofUser = "login=" + inBareQuotes(RzEdit2->Text());
  DM->Count_accee.Reopen();
  DM->Count_accee.FilterBy(ofUser);
  if (DM->Count_accee["countofid_caisse"] == 1) {
    DM->acce_caisse.FilterBy(ofUser);
    DM->operation["id_caisse_active"] = DM->acce_caisse["id_caisse"];
    DM->acce_caisse.Filtered(false);
  }
  DM->operation.Post();
  DM->operation.Reopen();
}

// An account without a password is entered with an empty one; no account is entered with none.
bool TLoginF::passwordMatches() {
  return !DM->utilisateur.Eof() && DM->utilisateur["mot_pase"].text() == RzEdit1->Text();
}

void TLoginF::showPasswordChange(bool on) {
  RzLabel3->setVisible(on);
  RzEdit4->setVisible(on);
  RzBitBtn7->setVisible(on);
  RzBitBtn5->setVisible(on);
}

// "Modifier votre mot de passe"
void TLoginF::RzBitBtn4Click() {
  showPasswordChange(true);
}

// "Valider"; an empty password is not taken, and nothing is said.
void TLoginF::RzBitBtn5Click() {
  DM->utilisateur.FilterBy("login=" + inBareQuotes(RzEdit2->Text()));
  if (!passwordMatches()) return ShowMessage("Ancien mot de pase invalide !");
  if (RzEdit4->Text().empty()) return;
  DM->utilisateur.Edit();
  DM->utilisateur["mot_pase"] = RzEdit4->Text();
  DM->utilisateur.Post();
  showPasswordChange(false);
  RzEdit1->Clear();
  RzEdit4->Clear();
  RzEdit1->SetFocus();
}

// A release on the button beside it shows a password in clear; leaving the button hides it.
void TLoginF::reveals(Button* button, Edit* password) {
  button->OnMouseUp = [password] { password->setEchoMode(QLineEdit::Normal); };
  button->OnMouseLeave = [password] { password->setEchoMode(QLineEdit::Password); };
}

}  // namespace tavoline
