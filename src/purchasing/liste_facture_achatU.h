#pragma once

#include <memory>

#include "data/value/Value.h"
#include "toolkit/forms/TForm.h"
#include "ui_liste_facture_achatU.h"

namespace tavoline {

class Report;

/// The purchase invoices: filtered, entered, changed, printed, deleted while they have no line, and paid.
/// Colours on the number and on what remains say which are paid, partly paid and open.
class Tliste_facture_achatF : public TForm, public Ui::liste_facture_achatF {
 public:
  Tliste_facture_achatF();
  ~Tliste_facture_achatF() override;

  std::unique_ptr<Report> frxReport2;  ///< The purchase invoice.

 private:
  void AjouterClick();
  void ModifierClick();
  void SupprimerClick();
  void ImprimerClick();
  void FiltrerClick();
  void InitialiserClick();
  void MontantVerseClick();

  static std::string ofTheCurrentInvoice();
  static bool atAnotherDesk();
  Value remainder();
  void payAtDesk();
  void payOutsideDesk();
  void giveExcessBack();

  Value givenBackOn_;  // an invoice whose excess the desk has back, and which still shows it; null for none
};

extern Tliste_facture_achatF* liste_facture_achatF;

}  // namespace tavoline
