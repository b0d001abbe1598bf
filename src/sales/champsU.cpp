#include "sales/champsU.h"

#include "data/DMU.h"
#include "sales/Commande_avnU.h"
#include "sales/OrderRow.h"
#include "sales/commandeU.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TchampsF* champsF = nullptr;

TchampsF::TchampsF() : TForm("champsF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

/// The totals written here are provisional: lines added later are not in them, and the closing computes all
/// of them again.
void TchampsF::EnregistrerClick() {
  Label10->Caption(DBEdit1->Text());
  DM->Reopen({&DM->commande, &DM->relation_commande, &DM->relation_commande1, &DM->sum_commande});
  if (DM->relation_commande1.Eof()) return ShowMessage("Opétation incomplet");
  DM->commande.Edit();
  DM->commande.Post();
  DM->Table_.Edit();
  DM->Table_.Post();
  filterOrder(Label9->Caption());
  writeTypedDiscount();
  writeDiscount();
  writeTax();
  writeTotal();
  DM->Table_.Filtered(false);
  commandeF->RzButton1->Click();
  Close();
}

void TchampsF::writeTypedDiscount() {
  DM->commande.Edit();
  DM->commande["remise"] = Label10->Caption();
  DM->commande.Post();
  DM->commande.Edit();
  DM->commande["login"] = Commande_avnF->DBText8->Caption();
  DM->commande["HT"] = DM->sum_commande["SumOftotal"];
  DM->commande.Post();
}

void TchampsF::writeTotal() {
  DM->commande.Edit();
  DM->commande["tcc"] = DM->commande["HT"] + DM->commande["TVA"] - DM->commande["remi"];
  DM->commande.Post();
}

/// Only closes: a typed change waits in the row's edit state for the next Post, or for a Close to drop it.
void TchampsF::FermerClick() {
  Close();
}

}  // namespace tavoline
