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
  saves(DM->acce_caisse, *this, Enregistrer, {RzDBLookupComboBox1, RzDBLookupComboBox2});
  givesUp(DM->acce_caisse, *this, Fermer, {RzDBLookupComboBox1, RzDBLookupComboBox2});
  Ready();
}

void TAff_caisseF::RzDBLookupComboBox1Click() {
  DBEdit6->Text(DM->Caisse["nom_caisse"].text());
  DBEdit1->Text(DM->Caisse["general"].text());
}

void TAff_caisseF::RzDBLookupComboBox2Click() {
  DBEdit5->Text(DM->utilisateur["nom"].text());
}

void TAff_caisseF::FormClose() {
  MenuF->RzGroupBar2->setEnabled(true);
  DM->acce_caisse.Cancel();
}

}  // namespace tavoline
