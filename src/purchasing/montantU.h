#pragma once

#include <deque>
#include <functional>

#include "data/value/Value.h"
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
  void payFirst();
  void payFurther();
  void writeDue();
  static void writeSum(const Value& before);
  static void writeRest();
  static void takeFromDesk(const Value& before);

  // The writes that a payment still needs, in their order; some are left where the store refused one.
  std::deque<std::function<void()>> due_;
};

extern TMontantF* MontantF;

}  // namespace tavoline
