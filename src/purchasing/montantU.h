#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_montantU.h"

namespace tavoline {

/// The payment of a purchase invoice, modal over the list, which filters the invoices to the one to be paid.
/// Label7 holds the amount paid before, as a text that only a payment at a desk sets. Amounts are compared as
/// the texts that are shown.
class TMontantF : public TForm, public Ui::MontantF {
 public:
  TMontantF();

 protected:
  void FormShow() override;
  void FormClose() override;

 private:
  void EnregistrerClick();
  static bool atDesk();
  static void standOnActiveDesk();
  static void payFirst();
  void payFurther();
};

extern TMontantF* MontantF;

}  // namespace tavoline
