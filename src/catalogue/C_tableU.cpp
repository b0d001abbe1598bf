#include "catalogue/C_tableU.h"

#include "data/DMU.h"
#include "shell/Entry.h"

namespace tavoline {

TC_tableF* C_tableF = nullptr;

TC_tableF::TC_tableF() : TForm("C_tableF") {
  setupUi(this);
  RzDBLookupComboBox1->OnChange = [this] { RzDBLookupComboBox1Click(); };
  saves(DM->Table_, *this, Enregistrer, {DBEdit2, RzDBComboBox1, RzDBLookupComboBox1});
  givesUp(DM->Table_, *this, Fermer, {DBEdit2, RzDBComboBox1, RzDBLookupComboBox1});
  Ready();
}

// The table takes the name of its place only by way of this choice.
void TC_tableF::RzDBLookupComboBox1Click() {
  DBEdit4->Text(DM->Endroit["Endoit"].text());
}

}  // namespace tavoline
