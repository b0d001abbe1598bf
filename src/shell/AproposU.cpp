#include "shell/AproposU.h"

namespace tavoline {

TAproposF* AproposF = nullptr;

TAproposF::TAproposF() : TForm("AproposF") {
  setupUi(this);
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
  Ready();
}

}  // namespace tavoline
