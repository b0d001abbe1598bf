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
  deletes(DM->Endroit, Supprimer);
  quits(DM->Endroit, *this, Quitter);
  navigates(DM->Endroit, Premier, Precedent, Suivant, Dernier);
  Ready();
}

void Tliste_endroitF::AjouterClick() {
  if (backToEntry(*c_endroitF, DM->Endroit)) return;
  beginEntry();
  DM->E.Reopen();
  DM->Endroit.Insert();
  DM->Endroit["ID_endroit"] = nextNumber(*DBText1);
  c_endroitF->Show();
  c_endroitF->RzDBEdit2->SetFocus();
}

void Tliste_endroitF::ModifierClick() {
  DM->Endroit.Edit();
  c_endroitF->Show();
  c_endroitF->RzDBEdit2->SetFocus();
  beginEntry();
}

}  // namespace tavoline
