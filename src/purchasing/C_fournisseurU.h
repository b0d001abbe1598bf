#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_fournisseurU.h"

namespace tavoline {

/// The entry of one supplier, docked over the list of suppliers.
class TC_fournisseurF : public TForm, public Ui::C_fournisseurF {
 public:
  TC_fournisseurF();

  void showMoves(bool shown);  ///< The two buttons that go to the next supplier and to the one before.
};

extern TC_fournisseurF* C_fournisseurF;

}  // namespace tavoline
