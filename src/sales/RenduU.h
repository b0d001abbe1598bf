#pragma once

#include <string>

#include "toolkit/forms/TForm.h"
#include "ui_RenduU.h"

namespace tavoline {

/// The change due after an order was closed, and the end of the work on it. Nothing typed here is stored. It
/// can only be left by "Enregistrer".
class TRenduF : public TForm, public Ui::RenduF {
  Q_OBJECT

 public:
  TRenduF();

  void Edit1Change();
  void Edit1Enter();
  void EnregistrerClick();

 protected:
  void CloseCommand() override {}

 private:
  void type(const std::string& amount);
  void emphasize();
};

extern TRenduF* RenduF;

}  // namespace tavoline
