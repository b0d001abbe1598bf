#pragma once

#include <string>

#include "toolkit/forms/TForm.h"
#include "ui_c_facture_achatU.h"

namespace tavoline {

/// The entry of a purchase invoice: its header, and its lines, each of which moves stock, purchase price and
/// totals as it is validated. Opened by the list of purchase invoices, which leaves the header in insert or
/// edit state and the lines filtered to it. "En Caisser" is stored by the click itself and follows no row.
class Tc_facture_achatF : public TForm, public Ui::c_facture_achatF {
 public:
  Tc_facture_achatF();

 protected:
  void FormClose() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void EnregistrerClick();
  void FermerClick();
  void AnnulerClick();
  void EnCaisserClick();
  void ChoisirFournisseurClick();
  void x1Click();
  void x2Click();
  void x3Click();
  void x4Click();
  void x5Click();
  void DBGrid1CellClick();
  void DBGrid1CellEnter(const std::string& field);

  void showLineOpen(bool open);
  void showDecoration(bool shown);
  void enableToolbar(bool enabled);
  void beginQuantity();
  void validateLine();
  void computeTotals();
  void openRemainder();
  void keepRemainder();
  void receiveStock();
  void correctStock();

  // Of the line under entry; lost when the screen closes.
  std::string mode_;                             // "Add", "Edit", or none under way
  std::string formerQuantity_, code_, invoice_;  // as they stood when the change of the line began
};

extern Tc_facture_achatF* c_facture_achatF;

}  // namespace tavoline
