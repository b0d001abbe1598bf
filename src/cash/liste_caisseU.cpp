#include "cash/liste_caisseU.h"

#include "cash/C_caisseU.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

Tliste_caisseF* liste_caisseF = nullptr;

Tliste_caisseF::Tliste_caisseF() : TForm("liste_caisseF") {
  setupUi(this);
  AdvSmoothButton1->OnClick = [this] { AdvSmoothButton1Click(); };
  AdvSmoothButton4->OnClick = [this] { AdvSmoothButton4Click(); };
  AdvSmoothButton9->OnClick = [this] { AdvSmoothButton9Click(); };
  quits(DM->Caisse, *this, AdvSmoothButton2);
  navigates(DM->Caisse, AdvSmoothButton8, AdvSmoothButton7, AdvSmoothButton5, AdvSmoothButton6);
  Ready();
}

// "C00" and a number without a fixed width: C001, ..., C009, C0010.
void Tliste_caisseF::AdvSmoothButton1Click() {
  beginEntry();
  DM->CSS.Reopen();
  DM->Caisse.Insert();
  const std::string number = DBText1->Caption() == "0" ? "1" : (DM->CSS["CSS"] + Value(1)).text();
  DM->Caisse["ID_caise"] = Label1->Caption() + number;
  DM->Caisse["date_creation"] = Clock::now();
  DM->Caisse["solde"] = "0";
  DM->Caisse["general"] = "NON";
  DM->Caisse["select"] = "OUI";
  C_caisseF->ShowModal();
}

void Tliste_caisseF::AdvSmoothButton4Click() {
  beginEntry();
  DM->CSS.Reopen();
  DM->Caisse.Edit();
  C_caisseF->ShowModal();
}

void Tliste_caisseF::AdvSmoothButton9Click() {
  DM->acce_caisse.Refresh();
  DM->acce_caisse.FilterBy("id_caisse=" + inBareQuotes(DM->Caisse["ID_caise"].text()));
  if (!DM->acce_caisse.Eof()) {
    ShowMessage("Vous devez d'abord supprimer l'affectation des caisses");
  } else if (ConfirmDeletion()) {
    DM->Caisse.Delete();
  }
  DM->acce_caisse.Filtered(false);
}

}  // namespace tavoline
