#pragma once

#include "shell/DateFilter.h"
#include "toolkit/forms/TForm.h"
#include "ui_statU.h"

namespace tavoline {

/// Revenue and expenses day by day, the desks' balances, and the best sellers. Which of them is in view
/// stands in Mode: "1" for revenue and expenses, "2" for best sellers, empty for the balances. It only reads.
class TstatF : public TForm, public Ui::statF {
  Q_OBJECT

 public:
  TstatF();

  void FiltreMoisActuelClick();
  void FiltrerParDateClick();
  void EtatCaissesClick();
  void RevenusDepensesClick();
  void MeilleurVenteClick();
  void FermerClick();

 protected:
  void FormShow() override;

 private:
  void draw();
  void showPanes(bool on);
  void totalPeriod(const DateFilter::Parts& from, const DateFilter::Parts& to);
  void filterDays(const std::string& period);

  DateFilter dates_;
};

extern TstatF* statF;

}  // namespace tavoline
