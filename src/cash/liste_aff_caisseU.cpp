#include "cash/liste_aff_caisseU.h"

#include "cash/Aff_caisseU.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "shell/Entry.h"

namespace tavoline {

Tliste_aff_caisseF* liste_aff_caisseF = nullptr;

Tliste_aff_caisseF::Tliste_aff_caisseF() : TForm("liste_aff_caisseF") {
  setupUi(this);
  RzShapeButton3->OnClick = [this] { RzShapeButton3Click(); };
  RzShapeButton4->OnClick = [this] { RzShapeButton4Click(); };
  AdvSmoothButton1->OnClick = [this] { AdvSmoothButton1Click(); };
  deletes(DM->acce_caisse, RzShapeButton5);
  navigates(DM->acce_caisse, Premier, Precedent, Suivant, Dernier);
  Ready();
}

void Tliste_aff_caisseF::RzShapeButton3Click() {
  DM->acce_caisse.Insert();
  DM->acce_caisse["date_affectaion"] = Clock::now();
  DM->acce_caisse["general"] = "NON";
  beginEntry();
  Aff_caisseF->ShowModal();
}

void Tliste_aff_caisseF::RzShapeButton4Click() {
  DM->acce_caisse.Edit();
  beginEntry();
  Aff_caisseF->ShowModal();
}

void Tliste_aff_caisseF::AdvSmoothButton1Click() {
  Close();
  DM->acce_caisse.Cancel();
}

}  // namespace tavoline
