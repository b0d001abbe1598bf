#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_typeU.h"

namespace tavoline {

/// The entry of one category, over the list of categories.
class TType_produitF : public TForm, public Ui::Type_produitF {
 public:
  TType_produitF();
};

extern TType_produitF* Type_produitF;

}  // namespace tavoline
