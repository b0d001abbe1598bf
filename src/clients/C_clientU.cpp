#include "clients/C_clientU.h"

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "shell/Entry.h"

namespace tavoline {

TC_clientF* C_clientF = nullptr;

TC_clientF::TC_clientF() : TForm("C_clientF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  givesUp(DM->Client, *this, Fermer, {DBEdit1, DBEdit2});
  moves(Suivant, DM->Client, &Dataset::Next);
  moves(Precedent, DM->Client, &Dataset::Prior);
  Ready();
}

void TC_clientF::showMoves(bool shown) {
  Suivant->setVisible(shown);
  Precedent->setVisible(shown);
}

void TC_clientF::EnregistrerClick() {
  if (!mandatory({DBEdit1, DBEdit2})) return;
  DM->Client.Edit();
  DM->Client["date_creation"] = Clock::today();
  DM->Client.Post();
  endEntry(*this);
}

}  // namespace tavoline
