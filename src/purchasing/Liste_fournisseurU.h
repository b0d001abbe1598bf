#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_Liste_fournisseurU.h"

namespace tavoline {

/// The suppliers, searched while typing and filtered by exact equality. While the pick button is visible, it
/// and a double click choose the supplier of the purchase invoice being entered.
class TListe_fournisseurF : public TForm, public Ui::Liste_fournisseurF {
 public:
  TListe_fournisseurF();

 protected:
  void FormShow() override;

 private:
  void AjouterClick();
  void ModifierClick();
  void QuitterClick();
  void FiltrerClick();
  void InitialiserClick();
  void RzEdit1Change();
  void RzEdit2Change();
  void RzRapidFireButton1Click();
  void DBGrid1DblClick();
  void clearSearch();
};

extern TListe_fournisseurF* Liste_fournisseurF;

}  // namespace tavoline
