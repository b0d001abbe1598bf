#pragma once

#include <string_view>

#include "data/value/Value.h"
#include "toolkit/forms/TForm.h"
#include "ui_C_depenceU.h"

namespace tavoline {

/// An expense: an amount that a desk pays, for a reason of one of five types, each with inputs of its own.
/// Its mode stands in Label13 ("insert" or "edit"), the amount before a change in Label14.
class TC_depenceF : public TForm, public Ui::C_depenceF {
  Q_OBJECT

 public:
  TC_depenceF();

  void RzDBComboBox1Change();
  void RzDBLookupComboBox1Click();
  void RzDBLookupComboBox2Click();
  void RzDBLookupComboBox3Click();
  void RzRapidFireButton1Click();
  void RzBitBtn1Click();
  void AdvSmoothButton1Click();

  /// Shows the inputs for an invoice and those for a user as the type has them; a text that is no type leaves
  /// them as they are.
  void ShowReason(std::string_view type);
  /// Called on the row that is to be saved, once it is in insert or edit state.
  void Begins();

 private:
  void saveInsert();
  void saveEdit();
  static void debit(const Value& balance);
  void refuseAmount();
  void leave();

  Value begun_;  // the number of the expense
};

extern TC_depenceF* C_depenceF;

}  // namespace tavoline
