#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_C_clientU.h"

namespace tavoline {

/// The entry of one client, docked over the list of clients. Its date of creation is that of the last save.
class TC_clientF : public TForm, public Ui::C_clientF {
 public:
  TC_clientF();

  void showMoves(bool shown);  ///< The two buttons that go to the next client and to the one before.

 private:
  void EnregistrerClick();
};

extern TC_clientF* C_clientF;

}  // namespace tavoline
