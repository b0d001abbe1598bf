#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_Liste_TypeU.h"

namespace tavoline {

/// The categories of articles. They are never deleted: "Supprimer" stays disabled.
class TListe_TypeF : public TForm, public Ui::Liste_TypeF {
 public:
  TListe_TypeF();

 private:
  void AjouterClick();
  void ModifierClick();
};

extern TListe_TypeF* Liste_TypeF;

}  // namespace tavoline
