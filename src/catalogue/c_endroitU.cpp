#include "catalogue/c_endroitU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

Tc_endroitF* c_endroitF = nullptr;

Tc_endroitF::Tc_endroitF() : TForm("c_endroitF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void Tc_endroitF::EnregistrerClick() {
  if (!mandatory({RzDBEdit2})) return;
  saveEntry(DM->Endroit);
  endEntry(*this);
}

void Tc_endroitF::FermerClick() {
  DM->Endroit.Cancel();
  paintRed({RzDBEdit2}, false);
  endEntry(*this);
}

}  // namespace tavoline
