#include "catalogue/TVAU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TTVAF* TVAF = nullptr;

TTVAF::TTVAF() : TForm("TVAF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Ready();
}

void TTVAF::EnregistrerClick() {
  saveEntry(DM->TVA);
  DM->TVA.Reopen();
  Close();
}

}  // namespace tavoline
