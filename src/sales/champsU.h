#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_champsU.h"

namespace tavoline {

/// The discount of an order. Label9 carries the order's number, set by "Remisse" only; Label10 keeps the
/// typed discount across the reopening of commande, which drops whatever else was typed.
class TchampsF : public TForm, public Ui::champsF {
  Q_OBJECT

 public:
  TchampsF();

  void EnregistrerClick();
  void FermerClick();

 private:
  void writeTypedDiscount();
  void writeTotal();
};

extern TchampsF* champsF;

}  // namespace tavoline
