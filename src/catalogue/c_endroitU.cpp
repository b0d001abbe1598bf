#include "catalogue/c_endroitU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

Tc_endroitF* c_endroitF = nullptr;

Tc_endroitF::Tc_endroitF() : TForm("c_endroitF") {
  setupUi(this);
  saves(DM->Endroit, *this, Enregistrer, {RzDBEdit2});
  givesUp(DM->Endroit, *this, Fermer, {RzDBEdit2});
  Ready();
}

}  // namespace tavoline
