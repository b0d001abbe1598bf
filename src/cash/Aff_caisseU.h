#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_Aff_caisseU.h"

namespace tavoline {

/// The assignment of one user to one desk, modal over the list of assignments.
class TAff_caisseF : public TForm, public Ui::Aff_caisseF {
 public:
  TAff_caisseF();

 protected:
  void FormClose() override;

 private:
  void RzDBLookupComboBox1Click();
  void RzDBLookupComboBox2Click();
};

extern TAff_caisseF* Aff_caisseF;

}  // namespace tavoline
