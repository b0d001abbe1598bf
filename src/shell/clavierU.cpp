#include "shell/clavierU.h"

namespace tavoline {

TclavierF* clavierF = nullptr;

TclavierF::TclavierF() : TForm("clavierF") {
  setupUi(this);
  setWindowFlags(Qt::Window | Qt::WindowDoesNotAcceptFocus);  // its keys type where the focus is
  Ready();
}

}  // namespace tavoline
