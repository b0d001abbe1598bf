#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_liste_tableU.h"

namespace tavoline {

/// The tables of the restaurant, all of them or those of one place.
class Tliste_tableF : public TForm, public Ui::liste_tableF {
 public:
  Tliste_tableF();

 protected:
  void FormClose() override;

 private:
  void AjouterClick();
  void ModifierClick();
  void FiltrerClick();
  void InitialiserClick();
  void showEntry(const char* mode);
};

extern Tliste_tableF* liste_tableF;

}  // namespace tavoline
