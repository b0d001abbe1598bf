#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_fac_clU.h"

namespace tavoline {

/// Ties a finished order to a client, by code or by name. The user who saves becomes the order's user.
class Tfac_clF : public TForm, public Ui::fac_clF {
  Q_OBJECT

 public:
  Tfac_clF();

  void DBEdit1Enter();
  void DBEdit1Exit();
  void RzDBLookupComboBox1Change();
  void EnregistrerClick();
  void FermerClick();

 protected:
  void FormClose() override;
};

extern Tfac_clF* fac_clF;

}  // namespace tavoline
