#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_tableU.h"

namespace tavoline {

/// The entry of one table, docked over the list of tables. Label8 carries the mode and is read by nothing.
class TC_tableF : public TForm, public Ui::C_tableF {
 public:
  TC_tableF();

 private:
  void RzDBLookupComboBox1Click();
};

extern TC_tableF* C_tableF;

}  // namespace tavoline
