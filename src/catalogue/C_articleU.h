#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_articleU.h"

namespace tavoline {

/// The entry of one article, docked over the list. Enter and Down walk through its inputs, Up walks back.
class TC_articleF : public TForm, public Ui::C_articleF {
 public:
  TC_articleF();

 private:
  void wireKeyboardPath();
  void demandSellable();
};

extern TC_articleF* C_articleF;

}  // namespace tavoline
