#include "cash/acc_caisseU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

Tacc_caisseF* acc_caisseF = nullptr;

Tacc_caisseF::Tacc_caisseF() : TForm("acc_caisseF") {
  setupUi(this);
  setWindowFlags(kNoFrameButton);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Ready();
}

void Tacc_caisseF::EnregistrerClick() {
  if (!mandatory({RzDBLookupComboBox1})) return;
  saveEntry(DM->operation);
  Close();
  DM->acce_caisse.Filtered(false);
}

}  // namespace tavoline
