#include "shell/utilisateurUU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TutilisateurFF* utilisateurFF = nullptr;

TutilisateurFF::TutilisateurFF() : TForm("utilisateurFF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  InsertImage->OnClick = [this] { insertImage(*DBImage1); };
  Ready();
}

void TutilisateurFF::FormClose() {
  DM->utilisateur.Reopen();
}

// Neither a password nor a role is asked for.
void TutilisateurFF::EnregistrerClick() {
  const EntryInputs mandatories = {RzDBEdit9, RzDBEdit1, RzDBEdit2};
  if (!filledIn(mandatories, "veuillez saisir les champs obligatoire")) return;
  saveEntry(DM->utilisateur);
  paintRed(mandatories, false);
  endEntry(*this);
}

void TutilisateurFF::FermerClick() {
  DM->utilisateur.Cancel();
  endEntry(*this);
}

}  // namespace tavoline
