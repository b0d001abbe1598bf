#include "catalogue/C_typeU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TType_produitF* Type_produitF = nullptr;

TType_produitF::TType_produitF() : TForm("Type_produitF") {
  setupUi(this);
  saves(DM->type_produit, *this, Enregistrer, {RzDBEdit2});
  givesUp(DM->type_produit, *this, Fermer);  // an input that is red stays red
  Ready();
}

}  // namespace tavoline
