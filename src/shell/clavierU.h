#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_clavierU.h"

namespace tavoline {

/// A keypad in a window of its own. It has no handler, and no screen opens it.
class TclavierF : public TForm, public Ui::clavierF {
 public:
  TclavierF();
};

extern TclavierF* clavierF;

}  // namespace tavoline
