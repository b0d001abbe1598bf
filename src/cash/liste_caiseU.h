#pragma once

#include <memory>

#include "shell/DateFilter.h"
#include "toolkit/forms/TForm.h"
#include "ui_liste_caiseU.h"

namespace tavoline {

class Report;

/// The journal of closings, and the two doors to the closing screen: "Ajouter" decides what a closing covers
/// and begins it, "Voir" shows one that was saved. Cells are edited in place, with no check. Two sets of
/// statements stand in hidden labels: those for a closing to come see only orders that are open, those for
/// viewing all orders of the period.
class Tliste_caiseF : public TForm, public Ui::liste_caiseF {
  Q_OBJECT

 public:
  Tliste_caiseF();
  ~Tliste_caiseF() override;

  void X1Click();
  void RzComboBox2Change();
  void AdvSmoothButton1Click();
  void RzShapeButton4Click();
  void AdvSmoothButton4Click();
  void RzLabel10Click();
  void cancel1Click();
  void AdvSmoothButton3Click();
  void AdvSmoothButton2Click();

  std::unique_ptr<Report> frxReport1;  ///< The journal, as it is filtered.

 protected:
  void FormShow() override;

 private:
  bool backToOpenClosing();
  bool coversAllDesks();
  void takeNewStatements();
  void takeViewStatements(bool allDesks);
  void openPeriod(bool allDesks);
  void showClosing();
  void insertClosing(bool allDesks);
  void writeStartingAmounts();

  DateFilter dates_;
};

extern Tliste_caiseF* liste_caiseF;

}  // namespace tavoline
