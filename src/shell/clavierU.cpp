#include "shell/clavierU.h"

namespace tavoline {

TclavierF* clavierF = nullptr;

TclavierF::TclavierF() : TForm("clavierF") {
  setupUi(this);
  Ready();
}

}  // namespace tavoline
