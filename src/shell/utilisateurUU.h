#pragma once

#include "toolkit/forms/TForm.h"
#include "ui_utilisateurUU.h"

namespace tavoline {

/// The entry of an account: DM->utilisateur in insert or edit state, begun by the list. Closed in any way, it
/// lets the list show what the store holds. "Superviseur" is bound to nothing.
class TutilisateurFF : public TForm, public Ui::utilisateurFF {
 public:
  TutilisateurFF();

 protected:
  void FormClose() override;

 private:
  void EnregistrerClick();
  void FermerClick();
};

extern TutilisateurFF* utilisateurFF;

}  // namespace tavoline
