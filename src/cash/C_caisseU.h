#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_caisseU.h"

namespace tavoline {

/// The entry of one cash desk, modal over the list of desks.
class TC_caisseF : public TForm, public Ui::C_caisseF {
 public:
  TC_caisseF();
};

extern TC_caisseF* C_caisseF;

}  // namespace tavoline
