#include "shell/utilisateurUU.h"

#include "data/DMU.h"
#include "shell/Entry.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TutilisateurFF* utilisateurFF = nullptr;

TutilisateurFF::TutilisateurFF() : TForm("utilisateurFF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  InsertImage->OnClick = [this] { InsertImageClick(); };
  Ready();
}

void TutilisateurFF::FormClose() {
  DM->utilisateur.Reopen();
}

// Neither a password nor a role is asked for.
void TutilisateurFF::EnregistrerClick() {
  if (!mandatory({RzDBEdit9, RzDBEdit1, RzDBEdit2}, "veuillez saisir les champs obligatoire")) return;
  saveEntry(DM->utilisateur);
  endEntry(*this);
}

void TutilisateurFF::FermerClick() {
  DM->utilisateur.Cancel();
  endEntry(*this);
}

void TutilisateurFF::InsertImageClick() {
  const std::string file = Messages::current().openPicture();
  if (!file.empty()) DBImage1->LoadFromFile(file);
}

}  // namespace tavoline
