#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_acc_caisseU.h"

namespace tavoline {

/// The question of the day, modal: at which of his desks does the user work? It is left only by an answer.
class Tacc_caisseF : public TForm, public Ui::acc_caisseF {
 public:
  Tacc_caisseF();

 protected:
  void CloseCommand() override {}

 private:
  void EnregistrerClick();
};

extern Tacc_caisseF* acc_caisseF;

}  // namespace tavoline
