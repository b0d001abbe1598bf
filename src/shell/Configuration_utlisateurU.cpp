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
  Supprimer->OnClick = [this] { SupprimerClick(); };
  Quitter->OnClick = [this] { QuitterClick(); };
  Ready();
}

// No key is computed: the user types the login.
void TConfiguration_utlisateurF::AjouterClick() {
  utilisateurFF->Show();
  DM->utilisateur.Insert();
  beginEntry();
}

void TConfiguration_utlisateurF::ModifierClick() {
  utilisateurFF->Show();
  DM->utilisateur.Edit();
  beginEntry();
}

// Any account may go, the one logged in and the last "Admin" too; its assignments and its sessions stay.
void TConfiguration_utlisateurF::SupprimerClick() {
  deleteOnConsent(DM->utilisateur);
}

void TConfiguration_utlisateurF::QuitterClick() {
  DM->utilisateur.Cancel();
  Close();
}

}  // namespace tavoline
