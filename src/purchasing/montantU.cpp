#include "purchasing/montantU.h"

#include "data/DMU.h"
#include "data/value/Text.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TMontantF* MontantF = nullptr;

TMontantF::TMontantF() : TForm("MontantF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  DBEdit1->OnEnter = [this] { Enregistrer->SetFocus(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Ready();
}

bool TMontantF::atDesk() {
  return DM->facture_achat["en_caisse"] == "OUI";
}

void TMontantF::standOnActiveDesk() {
  DM->Caisse.FilterBy("id_caise=" + inBareQuotes(DM->operation["id_caisse_active"].text()));
}

// What was paid before stands in the field, to be typed over.
void TMontantF::FormShow() {
  Bureau->setVisible(atDesk());
  if (atDesk()) standOnActiveDesk();
  DBEdit1->SetFocus();
  DBEdit1->sync();
  DBEdit1->selectAll();
}

// Stored in any case once it does not exceed the total: a further payment that is refused afterwards has then
// taken the place of what was paid before.
void TMontantF::EnregistrerClick() {
  if (!due_.empty()) return writeDue();
  const std::string amount = DBEdit1->Text();
  if (amount.empty()) return;
  if (amount > DBText1->Caption()) return ShowMessage("Le montant Versé doit etre inférieur ou égal a TTC");
  DM->facture_achat.Cancel();  // the amount is written behind what others changed, and once
  DM->facture_achat.Refresh();
  DM->facture_achat.FilterBy("n_facture=" + inBareQuotes(DM->facture_achat["N_facture"].text()));
  DM->facture_achat.Edit();
  DM->facture_achat["MONTANT_VERSE"] = amount;
  DM->facture_achat.Post();
  if (Label7->Caption() == "0") {
    payFirst();
  } else {
    if (DBEdit1->Text() > DBText2->Caption())
      return ShowMessage("Le montant Versé doit etre inférieur ou égal {montant reste} ");
    payFurther();
  }
}

void TMontantF::payFirst() {
  due_ = {writeRest};
  if (atDesk()) due_.emplace_back([] { takeFromDesk(Value(0)); });
  writeDue();
}

void TMontantF::payFurther() {
  const Value before = Value(Label7->Caption()).toFloat();
  due_ = {[before] { writeSum(before); }, writeRest};
  if (atDesk()) due_.emplace_back([before] { takeFromDesk(before); });
  writeDue();
}

// What the store refuses does not wait in its row, where a repeated payment would add to it.
void TMontantF::writeDue() {
  while (!due_.empty()) {
    orElse(
        due_.front(),
        [] {
          DM->facture_achat.Cancel();
          DM->Caisse.Cancel();
        },
        atDesk() ? "Le montant versé est inscrit sur la facture, mais la caisse n'est pas encore débitée.\n"
                   "Touchez encore « Enregistrer » : le reste s'écrit alors, et rien deux fois."
                 : "Le montant versé est inscrit, mais pas encore ce qui reste à payer.\n"
                   "Touchez encore « Enregistrer » : rien n'est compté deux fois.");
    due_.pop_front();
  }
  Close();
  DM->facture_achat.Filtered(false);
}

void TMontantF::writeSum(const Value& before) {
  DM->facture_achat.Edit();
  DM->facture_achat["MONTANT_VERSE"] = DM->facture_achat["MONTANT_VERSE"] + before;
  DM->facture_achat.Post();
}

void TMontantF::writeRest() {
  DM->facture_achat.Edit();
  DM->facture_achat["MONTANT_RESTE"] = DM->facture_achat["TCC"] - DM->facture_achat["MONTANT_VERSE"];
  DM->facture_achat.Post();
}

// Exactly this payment: all that is paid less what was paid before.
void TMontantF::takeFromDesk(const Value& before) {
  standOnActiveDesk();
  DM->Caisse.Edit();
  DM->Caisse["solde"] = DM->Caisse["solde"] - DM->facture_achat["MONTANT_VERSE"] + before;
  DM->Caisse.Post();
  DM->Caisse.Filtered(false);
}

// An amount that was typed and not saved is dropped before the filter goes, which would store it.
void TMontantF::FormClose() {
  due_.clear();
  DM->facture_achat.Cancel();
  DM->facture_achat.Filtered(false);
}

}  // namespace tavoline
