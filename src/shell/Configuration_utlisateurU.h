#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_Configuration_utlisateurU.h"

namespace tavoline {

/// The list of the accounts that can log in. Rights are the role of an account and nothing else.
class TConfiguration_utlisateurF : public TForm, public Ui::Configuration_utlisateurF {
 public:
  TConfiguration_utlisateurF();

 private:
  void AjouterClick();
  void ModifierClick();
};

extern TConfiguration_utlisateurF* Configuration_utlisateurF;

}  // namespace tavoline
