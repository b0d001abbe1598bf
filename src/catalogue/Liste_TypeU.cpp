#include "catalogue/Liste_TypeU.h"

#include "catalogue/C_typeU.h"
#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TListe_TypeF* Liste_TypeF = nullptr;

TListe_TypeF::TListe_TypeF() : TForm("Liste_TypeF") {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  deletes(DM->type_produit, Supprimer);
  quits(DM->type_produit, *this, Quitter);
  navigates(DM->type_produit, Premier, Precedent, Suivant, Dernier);
  Ready();
}

void TListe_TypeF::AjouterClick() {
  if (backToEntry(*Type_produitF, DM->type_produit)) return;
  DM->T_p.Reopen();
  DM->type_produit.Insert();
  DM->type_produit["code"] = nextNumber(*DBText1);
  Type_produitF->Show();
  Type_produitF->RzDBEdit2->SetFocus();
  beginEntry();
}

void TListe_TypeF::ModifierClick() {
  DM->type_produit.Edit();
  Type_produitF->Show();
  Type_produitF->RzDBEdit2->SetFocus();
  beginEntry();
}

}  // namespace tavoline
