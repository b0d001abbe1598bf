#include "cash/C_caisseU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TC_caisseF* C_caisseF = nullptr;

TC_caisseF::TC_caisseF() : TForm("C_caisseF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void TC_caisseF::EnregistrerClick() {
  if (!mandatory({DBEdit2})) return;
  saveEntry(DM->Caisse);
  endEntry(*this);
}

void TC_caisseF::FermerClick() {
  DM->Caisse.Cancel();
  endEntry(*this);
}

}  // namespace tavoline
