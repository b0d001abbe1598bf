#include "cash/Aff_caisseU.h"

#include "data/DMU.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"

namespace tavoline {

TAff_caisseF* Aff_caisseF = nullptr;

TAff_caisseF::TAff_caisseF() : TForm("Aff_caisseF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  RzDBLookupComboBox1->OnChange = [this] { RzDBLookupComboBox1Click(); };
  RzDBLookupComboBox2->OnChange = [this] { RzDBLookupComboBox2Click(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void TAff_caisseF::RzDBLookupComboBox1Click() {
  DBEdit6->Text(DM->Caisse["nom_caisse"].text());
  DBEdit1->Text(DM->Caisse["general"].text());
}

void TAff_caisseF::RzDBLookupComboBox2Click() {
  DBEdit5->Text(DM->utilisateur["nom"].text());
}

void TAff_caisseF::EnregistrerClick() {
  if (!mandatory({RzDBLookupComboBox1, RzDBLookupComboBox2})) return;
  saveEntry(DM->acce_caisse);
  endEntry(*this);
}

void TAff_caisseF::FermerClick() {
  DM->acce_caisse.Cancel();
  paintRed({RzDBLookupComboBox1, RzDBLookupComboBox2}, false);
  endEntry(*this);
}

void TAff_caisseF::FormClose() {
  MenuF->RzGroupBar2->setEnabled(true);
  DM->acce_caisse.Cancel();
}

}  // namespace tavoline
