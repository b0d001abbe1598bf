#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_liste_aff_caisseU.h"

namespace tavoline {

/// Which user may work at which desk. Cells are edited in place.
class Tliste_aff_caisseF : public TForm, public Ui::liste_aff_caisseF {
 public:
  Tliste_aff_caisseF();

 private:
  void RzShapeButton3Click();
  void RzShapeButton4Click();
  void AdvSmoothButton1Click();
};

extern Tliste_aff_caisseF* liste_aff_caisseF;

}  // namespace tavoline
