#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_AproposU.h"

namespace tavoline {

/// About the program: one picture and the version. It has no handler.
class TAproposF : public TForm, public Ui::AproposF {
 public:
  TAproposF();
};

extern TAproposF* AproposF;

}  // namespace tavoline
