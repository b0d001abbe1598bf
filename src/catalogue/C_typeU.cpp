#include "catalogue/C_typeU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TType_produitF* Type_produitF = nullptr;

TType_produitF::TType_produitF() : TForm("Type_produitF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void TType_produitF::EnregistrerClick() {
  if (!mandatory({RzDBEdit2})) return;
  saveEntry(DM->type_produit);
  endEntry(*this);
}

void TType_produitF::FermerClick() {
  DM->type_produit.Cancel();
  endEntry(*this);
}

}  // namespace tavoline
