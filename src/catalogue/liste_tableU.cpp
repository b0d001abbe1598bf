#include "catalogue/liste_tableU.h"

#include "catalogue/C_tableU.h"
#include "data/DMU.h"
#include "data/value/Text.h"
#include "shell/Entry.h"

namespace tavoline {

Tliste_tableF* liste_tableF = nullptr;

Tliste_tableF::Tliste_tableF() : TForm("liste_tableF") {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Filtrer->OnClick = [this] { FiltrerClick(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
  deletes(DM->Table_, Supprimer);
  quits(DM->Table_, *this, Quitter);
  navigates(DM->Table_, Premier, Precedent, Suivant, Dernier);
  // The button in the place of "first" goes one row back here, unlike on the list of places.
  moves(Premier, DM->Table_, &Dataset::Prior);
  Ready();
}

void Tliste_tableF::showEntry(const char* mode) {
  C_tableF->Label8->Caption(mode);
  showInMainArea(*C_tableF);
}

void Tliste_tableF::AjouterClick() {
  DM->T.Reopen();
  DM->Table_.Insert();
  DM->Table_["ID_table"] = nextNumber(*DBText1);
  DM->Table_["etat"] = "OFF";
  DM->Table_["control"] = "open";
  showEntry("Insert");
  C_tableF->DBEdit2->SetFocus();
  beginEntry();
}

void Tliste_tableF::ModifierClick() {
  showEntry("Edit");
  DM->Table_.Edit();
  beginEntry();
}

void Tliste_tableF::FiltrerClick() {
  if (RzDBLookupComboBox1->Text().empty()) return;
  DM->Table_.FilterBy("id_endroit=" + inQuotes(RzDBLookupComboBox1->KeyValue().text()));
}

void Tliste_tableF::InitialiserClick() {
  DM->Table_.Filtered(false);
  RzDBLookupComboBox1->KeyValue(Value());
}

void Tliste_tableF::FormClose() {
  DM->Table_.Filtered(false);
}

}  // namespace tavoline
