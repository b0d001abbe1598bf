#include "shell/Configuration_utlisateurU.h"

#include "data/DMU.h"
#include "shell/Entry.h"
#include "shell/utilisateurUU.h"

namespace tavoline {

TConfiguration_utlisateurF* Configuration_utlisateurF = nullptr;

TConfiguration_utlisateurF::TConfiguration_utlisateurF() : TForm("Configuration_utlisateurF") {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  // Any account may go, the one logged in and the last "Admin" too; its assignments and its sessions stay.
  deletes(DM->utilisateur, Supprimer);
  quits(DM->utilisateur, *this, Quitter);
  Ready();
}

// No key is computed: the user types the login.
void TConfiguration_utlisateurF::AjouterClick() {
  if (backToEntry(*utilisateurFF, DM->utilisateur)) return;
  utilisateurFF->Show();
  DM->utilisateur.Insert();
  beginEntry();
}

void TConfiguration_utlisateurF::ModifierClick() {
  utilisateurFF->Show();
  DM->utilisateur.Edit();
  beginEntry();
}

}  // namespace tavoline
