#include "shell/AproposU.h"

namespace tavoline {

TAproposF* AproposF = nullptr;

TAproposF::TAproposF() : TForm("AproposF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  Ready();
}

}  // namespace tavoline
