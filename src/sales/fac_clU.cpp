#include "sales/fac_clU.h"

#include "data/DMU.h"
#include "data/value/Text.h"
#include "sales/Commande_avnU.h"

namespace tavoline {

Tfac_clF* fac_clF = nullptr;

Tfac_clF::Tfac_clF() : TForm("fac_clF") {
  setupUi(this);
  DBEdit1->OnEnter = [this] { DBEdit1Enter(); };
  DBEdit1->OnExit = [this] { DBEdit1Exit(); };
  RzDBLookupComboBox1->OnChange = [this] { RzDBLookupComboBox1Change(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

/// An unknown code writes no name.
void Tfac_clF::DBEdit1Enter() {
  DM->Client.FilterBy("code_client=" + inBareQuotes(DBEdit1->Text()));
  DM->commande["client"] = DM->Client["nom_client"];
  DM->Client.Filtered(false);
}

void Tfac_clF::DBEdit1Exit() {
  if (DBEdit1->Text().empty()) DM->Client.Filtered(false);
}

/// Of two clients of one name the first one's code is taken.
void Tfac_clF::RzDBLookupComboBox1Change() {
  DM->Client.FilterBy("nom_client=" + inBareQuotes(RzDBLookupComboBox1->Text()));
  DBEdit1->Text(DM->Client["code_client"].text());
  DM->Client.Filtered(false);
}

void Tfac_clF::EnregistrerClick() {
  DM->commande.Edit();
  DM->commande["login"] = Commande_avnF->DBText8->Caption();
  DM->commande.Post();
  Close();
  DM->commande.Filtered(false);
}

void Tfac_clF::FermerClick() {
  DM->commande.Cancel();
  DM->commande.Filtered(false);
  Close();
}

void Tfac_clF::FormClose() {
  DM->commande.Filtered(false);
}

}  // namespace tavoline
