#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_liste_caisseU.h"

namespace tavoline {

/// The cash desks. Cells are edited in place: a balance can be typed over here. Label1 holds the prefix of
/// the codes.
class Tliste_caisseF : public TForm, public Ui::liste_caisseF {
 public:
  Tliste_caisseF();

 private:
  void AdvSmoothButton1Click();
  void AdvSmoothButton4Click();
  void AdvSmoothButton9Click();
};

extern Tliste_caisseF* liste_caisseF;

}  // namespace tavoline
