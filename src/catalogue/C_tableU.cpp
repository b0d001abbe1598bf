#include "catalogue/C_tableU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TC_tableF* C_tableF = nullptr;

TC_tableF::TC_tableF() : TForm("C_tableF") {
  setupUi(this);
  RzDBLookupComboBox1->OnChange = [this] { RzDBLookupComboBox1Click(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

// The table takes the name of its place only by way of this choice.
void TC_tableF::RzDBLookupComboBox1Click() {
  DBEdit4->Text(DM->Endroit["Endoit"].text());
}

void TC_tableF::EnregistrerClick() {
  if (!mandatory({DBEdit2, RzDBComboBox1, RzDBLookupComboBox1})) return;
  saveEntry(DM->Table_);
  endEntry(*this);
}

void TC_tableF::FermerClick() {
  DM->Table_.Cancel();
  paintRed({DBEdit2, RzDBComboBox1, RzDBLookupComboBox1}, false);
  endEntry(*this);
}

}  // namespace tavoline
