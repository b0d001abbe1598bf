#include "clients/liste_ClientU.h"

#include "clients/C_clientU.h"
#include "data/DMU.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "toolkit/report/Report.h"

namespace tavoline {

Tliste_ClientF* liste_ClientF = nullptr;

Tliste_ClientF::Tliste_ClientF()
    : TForm("liste_ClientF"), frxReport1(std::make_unique<Report>("Tliste_ClientF", "frxReport1", this)) {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Quitter->OnClick = [this] { QuitterClick(); };
  Filtrer->OnClick = [this] { FiltrerClick(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
  RzEdit1->OnChange = [this] { RzEdit1Change(); };
  RzEdit2->OnChange = [this] { RzEdit2Change(); };
  DBGrid1->OnDblClick = [this] { DBGrid1DblClick(); };
  // Two ways to pick a client, for a screen that would show them; none does.
  for (Button* pick : {RzRapidFireButton1, RzRapidFireButton2}) {
    pick->OnClick = [this, pick] {
      pick->hide();
      Close();
    };
  }
  deletes(DM->Client, Supprimer);
  navigates(DM->Client, Premier, Precedent, Suivant, Dernier);
  frxReport1->OnClosePreview = [] { DM->Client.Filtered(false); };
  Ready();
}

Tliste_ClientF::~Tliste_ClientF() = default;

// The query begins anew; a filter stays.
void Tliste_ClientF::FormShow() {
  runQuery(DM->Client, "select * from Client");
}

// Searches the codes for what stands in the field of the name.
void Tliste_ClientF::RzEdit1Change() {
  runQuery(DM->Client, "select * from Client where code_client like " + inBareQuotes(RzEdit2->Text() + "%"));
}

void Tliste_ClientF::RzEdit2Change() {
  runQuery(DM->Client, "select * from Client where nom_client like " + inBareQuotes(RzEdit2->Text() + "%"));
}

void Tliste_ClientF::FiltrerClick() {
  filterByEither(DM->Client, "code_Client", RzEdit1->Text(), "nom_client", RzEdit2->Text());
}

void Tliste_ClientF::InitialiserClick() {
  DM->Client.Filtered(false);
  clearSearch();
}

// A field that held something searches once more as it is emptied.
void Tliste_ClientF::clearSearch() {
  RzEdit1->Clear();
  RzEdit2->Clear();
}

void Tliste_ClientF::QuitterClick() {
  DM->Client.Cancel();
  Close();
  clearSearch();
}

void Tliste_ClientF::AjouterClick() {
  showInMainArea(*C_clientF);
  DM->Client.Insert();
  C_clientF->showMoves(false);
  beginEntry();
}

void Tliste_ClientF::ModifierClick() {
  showInMainArea(*C_clientF);
  DM->Client.Edit();
  C_clientF->showMoves(true);
  beginEntry();
}

void Tliste_ClientF::DBGrid1DblClick() {
  for (Button* pick : {RzRapidFireButton1, RzRapidFireButton2})
    if (!pick->isHidden()) return pick->Click();
}

}  // namespace tavoline
