#pragma once

#include <memory>

#include "toolkit/forms/TForm.h"
#include "ui_liste_ClientU.h"

namespace tavoline {

class Report;

/// The clients, searched while typing and filtered by exact equality.
class Tliste_ClientF : public TForm, public Ui::liste_ClientF {
 public:
  Tliste_ClientF();
  ~Tliste_ClientF() override;

  std::unique_ptr<Report> frxReport1;  ///< The sheet of a client, ready as a template. Nothing launches it.

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
  void DBGrid1DblClick();
  void clearSearch();
};

extern Tliste_ClientF* liste_ClientF;

}  // namespace tavoline
