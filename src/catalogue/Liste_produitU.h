#pragma once

#include <memory>

#include "toolkit/forms/TForm.h"
#include "ui_Liste_produitU.h"

namespace tavoline {

class Report;

/// The catalogue: all articles, searched by code, designation and category, the low stocks marked. From the
/// first time that the purchase entry makes RzRapidFireButton1 visible, a double click picks instead of
/// opening the entry.
class TListe_produitF : public TForm, public Ui::Liste_produitF {
 public:
  TListe_produitF();
  ~TListe_produitF() override;

  std::unique_ptr<Report> frxReport1;  ///< The list of products, ready as a template. Nothing launches it.

 protected:
  void FormClose() override;

 private:
  void AjouterClick();
  void ModifierClick();
  void ImprimerClick();
  void FiltrerClick();
  void InitialiserClick();
  void RzRapidFireButton1Click();
  void DBGridEh1DblClick();
  QColor DBGridEh1CellColour(Dataset& rows, std::size_t record, const std::string& field) const;
  void showEntry(const char* mode);
};

extern TListe_produitF* Liste_produitF;

}  // namespace tavoline
