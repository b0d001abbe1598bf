#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_liste_endroitU.h"

namespace tavoline {

/// The places of the floor: one row per room or area.
class Tliste_endroitF : public TForm, public Ui::liste_endroitF {
 public:
  Tliste_endroitF();

 private:
  void AjouterClick();
  void ModifierClick();
};

extern Tliste_endroitF* liste_endroitF;

}  // namespace tavoline
