#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_TVAU.h"

namespace tavoline {

/// The one VAT setting, for all orders and purchase invoices. There is no cancel: what is typed stays pending
/// when the window is closed without saving.
class TTVAF : public TForm, public Ui::TVAF {
 public:
  TTVAF();

 private:
  void EnregistrerClick();
};

extern TTVAF* TVAF;

}  // namespace tavoline
