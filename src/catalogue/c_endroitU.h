#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_c_endroitU.h"

namespace tavoline {

/// The entry of one place, over the list of places.
class Tc_endroitF : public TForm, public Ui::c_endroitF {
 public:
  Tc_endroitF();
};

extern Tc_endroitF* c_endroitF;

}  // namespace tavoline
