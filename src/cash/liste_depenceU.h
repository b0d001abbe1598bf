#pragma once

#include <memory>

#include "shell/DateFilter.h"
#include "toolkit/forms/TForm.h"
#include "ui_liste_depenceU.h"

namespace tavoline {

class Report;

/// The expenses: a list with its filters, and what starts and deletes them.
class Tliste_depenceF : public TForm, public Ui::liste_depenceF {
  Q_OBJECT

 public:
  Tliste_depenceF();
  ~Tliste_depenceF() override;

  void AdvSmoothButton9Click();
  void AdvSmoothButton4Click();
  void AdvSmoothButton3Click();
  void AdvSmoothButton2Click();
  void RzShapeButton2Click();
  void RzLabel10Click();

  std::unique_ptr<Report> frxReport1;  ///< The list as it is filtered.

 private:
  void showEntry();

  DateFilter dates_;
};

extern Tliste_depenceF* liste_depenceF;

}  // namespace tavoline
