#include "catalogue/liste_endroitU.h"

#include "catalogue/c_endroitU.h"
#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

Tliste_endroitF* liste_endroitF = nullptr;

Tliste_endroitF::Tliste_endroitF() : TForm("liste_endroitF") {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Supprimer->OnClick = [this] { SupprimerClick(); };
  Quitter->OnClick = [this] { QuitterClick(); };
  navigates(DM->Endroit, Premier, Precedent, Suivant, Dernier);
  Ready();
}

void Tliste_endroitF::AjouterClick() {
  beginEntry();
  DM->E.Reopen();
  const bool first = DBText1->Caption().empty();
  DM->Endroit.Insert();
  DM->Endroit["ID_endroit"] = first ? Value(1) : DM->E["e"] + Value(1);
  c_endroitF->Show();
  c_endroitF->RzDBEdit2->SetFocus();
}

void Tliste_endroitF::ModifierClick() {
  DM->Endroit.Edit();
  c_endroitF->Show();
  c_endroitF->RzDBEdit2->SetFocus();
  beginEntry();
}

void Tliste_endroitF::SupprimerClick() {
  deleteOnConsent(DM->Endroit);
}

void Tliste_endroitF::QuitterClick() {
  DM->Endroit.Cancel();
  Close();
}

}  // namespace tavoline
