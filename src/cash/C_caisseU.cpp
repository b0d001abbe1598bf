#include "cash/C_caisseU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TC_caisseF* C_caisseF = nullptr;

TC_caisseF::TC_caisseF() : TForm("C_caisseF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  saves(DM->Caisse, *this, Enregistrer, {DBEdit2});
  givesUp(DM->Caisse, *this, Fermer);  // an input that is red stays red
  Ready();
}

}  // namespace tavoline
