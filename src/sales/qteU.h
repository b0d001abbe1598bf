#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_qteU.h"

namespace tavoline {

/// The quantity of the selected line. Typing puts relation_commande1 into edit state; nothing is posted
/// before "Enregistrer". Label2 carries the quantity before the change, set by the caller.
class TqteF : public TForm, public Ui::qteF {
  Q_OBJECT

 public:
  TqteF();

  void EnregistrerClick();

 protected:
  void CloseCommand() override;

 private:
  bool stockSuffices();
  void takeFromStock();
  void saveLine();
};

extern TqteF* qteF;

}  // namespace tavoline
