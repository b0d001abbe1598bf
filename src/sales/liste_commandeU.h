#pragma once

#include <memory>
#include <string>

#include "shell/DateFilter.h"
#include "toolkit/forms/TForm.h"
#include "ui_liste_commandeU.h"

namespace tavoline {

class Report;

/// The order history, working directly on commande: its filters outlive the screen. A range of dates is three
/// independent tests on day, month and year, kept in hidden labels.
class Tliste_commandeF : public TForm, public Ui::liste_commandeF {
  Q_OBJECT

 public:
  Tliste_commandeF();
  ~Tliste_commandeF() override;

  void FiltrerClick();
  void InitialiserClick();
  void AnnulerFiltresClick();
  void ImprimerClick();
  void FermerClick();
  void FacturesClientClick();
  void ImprimerFactureClientClick();
  void ReimprimerClick();
  void SupprimerClick();

  std::unique_ptr<Report> frxReport1;  ///< The customer ticket, again.
  std::unique_ptr<Report> frxReport2;  ///< The client invoice.
  std::unique_ptr<Report> frxReport3;  ///< The journal of orders.

 private:
  void wireFilters();
  void wireMenu();
  std::string ofTheCurrentOrder();

  DateFilter dates_;
};

extern Tliste_commandeF* liste_commandeF;

}  // namespace tavoline
