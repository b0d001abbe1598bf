#pragma once

#include <optional>
#include <string>
#include <utility>

#include "data/value/Value.h"
#include "toolkit/forms/TForm.h"
#include "ui_c_facture_achatU.h"

namespace tavoline {

/// The entry of a purchase invoice: its header, and its lines, each of which moves stock, purchase price and
/// totals as it is validated. Opened by the list of purchase invoices, which leaves the header in insert or
/// edit state and the lines filtered to it. "En Caisser" is stored by the click itself and follows no row.
class Tc_facture_achatF : public TForm, public Ui::c_facture_achatF {
 public:
  Tc_facture_achatF();

  /// Called on the header that is to be entered, once it is in insert or edit state.
  void Begins();
  /// Brings the entry back to the front if something in it is not stored yet, which another one would store
  /// half; false, and nothing done, otherwise.
  bool BackToPending();

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
  bool invoiceIsStillHere();
  void validateLine();
  void computeTotals();
  void openRemainder();
  void keepRemainder();
  void receiveStock();
  void correctStock();
  void writeStock(const Value& more);
  void writeOwedStock();
  void takeBackStock();

  Value number_;           // of the invoice
  bool lineOpen_ = false;  // begun, neither validated nor cancelled
  // Of a line that stands while the store refused its stock.
  struct OwedStock {
    std::string article;
    Value quantity, price;
  };
  std::optional<OwedStock> owed_;
  // A line whose stock is taken back and which stands still: the number of its row, and its article.
  std::optional<std::pair<int, std::string>> takenBack_;

  // Of the line under entry; lost when the screen closes.
  std::string mode_;                             // "Add", "Edit", or none under way
  std::string formerQuantity_, code_, invoice_;  // as they stood when the change of the line began
};

extern Tc_facture_achatF* c_facture_achatF;

}  // namespace tavoline
