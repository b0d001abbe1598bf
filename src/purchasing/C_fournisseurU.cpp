#include "purchasing/C_fournisseurU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TC_fournisseurF* C_fournisseurF = nullptr;

TC_fournisseurF::TC_fournisseurF() : TForm("C_fournisseurF") {
  setupUi(this);
  saves(DM->Fournisseur, *this, Enregistrer, {DBEdit1, DBEdit2});
  givesUp(DM->Fournisseur, *this, Fermer, {DBEdit1, DBEdit2});
  moves(Suivant, DM->Fournisseur, &Dataset::Next);
  moves(Precedent, DM->Fournisseur, &Dataset::Prior);
  Ready();
}

void TC_fournisseurF::showMoves(bool shown) {
  Suivant->setVisible(shown);
  Precedent->setVisible(shown);
}

}  // namespace tavoline
