#include "purchasing/Liste_fournisseurU.h"

#include "data/DMU.h"
#include "data/value/Text.h"
#include "purchasing/C_fournisseurU.h"
#include "purchasing/c_facture_achatU.h"
#include "shell/Entry.h"

namespace tavoline {

TListe_fournisseurF* Liste_fournisseurF = nullptr;

TListe_fournisseurF::TListe_fournisseurF() : TForm("Liste_fournisseurF") {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Quitter->OnClick = [this] { QuitterClick(); };
  Filtrer->OnClick = [this] { FiltrerClick(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
  RzEdit1->OnChange = [this] { RzEdit1Change(); };
  RzEdit2->OnChange = [this] { RzEdit2Change(); };
  RzRapidFireButton1->OnClick = [this] { RzRapidFireButton1Click(); };
  DBGrid1->OnDblClick = [this] { DBGrid1DblClick(); };
  deletes(DM->Fournisseur, Supprimer);
  navigates(DM->Fournisseur, Premier, Precedent, Suivant, Dernier);
  Ready();
}

// The query begins anew; a filter stays.
void TListe_fournisseurF::FormShow() {
  runQuery(DM->Fournisseur, "select * from fournisseur");
}

void TListe_fournisseurF::RzEdit1Change() {
  runQuery(DM->Fournisseur,
           "select * from fournisseur where code_fournisseur like " + inBareQuotes(RzEdit1->Text() + "%"));
}

void TListe_fournisseurF::RzEdit2Change() {
  runQuery(DM->Fournisseur,
           "select * from fournisseur where nom_fournisseur like " + inBareQuotes(RzEdit2->Text() + "%"));
}

void TListe_fournisseurF::FiltrerClick() {
  filterByEither(DM->Fournisseur, "code_fournisseur", RzEdit1->Text(), "nom_fournisseur", RzEdit2->Text());
}

void TListe_fournisseurF::InitialiserClick() {
  DM->Fournisseur.Filtered(false);
  clearSearch();
}

// A field that held something searches once more as it is emptied.
void TListe_fournisseurF::clearSearch() {
  RzEdit1->Clear();
  RzEdit2->Clear();
}

void TListe_fournisseurF::QuitterClick() {
  Close();
  DM->Fournisseur.Cancel();
  clearSearch();
}

void TListe_fournisseurF::AjouterClick() {
  showInMainArea(*C_fournisseurF);
  DM->Fournisseur.Insert();
  C_fournisseurF->showMoves(false);
  beginEntry();
}

void TListe_fournisseurF::ModifierClick() {
  showInMainArea(*C_fournisseurF);
  DM->Fournisseur.Edit();
  C_fournisseurF->showMoves(true);
  beginEntry();
}

void TListe_fournisseurF::RzRapidFireButton1Click() {
  if (DM->Fournisseur.RecordsCounted() > 0) {
    c_facture_achatF->DBEdit3->Text(DM->Fournisseur["code_fournisseur"].text());
    c_facture_achatF->DBEdit4->Text(DM->Fournisseur["nom_fournisseur"].text());
  }
  Close();
  RzRapidFireButton1->hide();
}

void TListe_fournisseurF::DBGrid1DblClick() {
  if (!RzRapidFireButton1->isHidden()) RzRapidFireButton1->Click();
}

}  // namespace tavoline
