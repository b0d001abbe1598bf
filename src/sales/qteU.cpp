#include "sales/qteU.h"

#include "data/DMU.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "sales/Commande_avnU.h"
#include "shell/Entry.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TqteF* qteF = nullptr;

TqteF::TqteF() : TForm("qteF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Ready();
}

/// A quantity that is given up does not wait for the next tap to store it.
void TqteF::CloseCommand() {
  DM->relation_commande1.Cancel();
  Close();
}

void TqteF::EnregistrerClick() {
  DM->Article.Reopen();
  DM->Article.FilterBy("code_barre=" + inBareQuotes(Commande_avnF->DBText14->Caption()));
  demandNumber(DM->relation_commande1["qte"], "la quantité");
  if (Commande_avnF->DBText11->Caption() != "OUI") return saveLine();
  if (!stockSuffices()) return ShowMessage("stock insuffisant");
  takeFromStock();
  orElse(
      [this] { saveLine(); }, [this] { Label2->Caption(DM->relation_commande1["qte"].text()); },
      "Le stock est ajusté, mais la ligne n'est pas encore enregistrée.\nTouchez encore « Enregistrer » : le "
      "stock ne sera pas ajusté deux fois.");
}

/// What the line held before comes back first, so that it counts as stock.
bool TqteF::stockSuffices() {
  const Value quantity = DM->relation_commande1["qte"];
  const Value stock = readInteger(Commande_avnF->DBText13->Caption());
  return quantity <= stock + readInteger(Label2->Caption());
}

void TqteF::takeFromStock() {
  DM->Article.Edit();
  DM->Article["qte_stock"] =
      DM->Article["qte_stock"] - DM->relation_commande1["qte"] + readInteger(Label2->Caption());
  DM->Article.Post();
}

/// The line keeps its price; the filter of the running total is set anew. Closes the dialog.
void TqteF::saveLine() {
  DM->relation_commande1.Edit();
  DM->relation_commande1["total"] = DM->relation_commande1["qte"] * DM->relation_commande1["prix"];
  DM->relation_commande1.Post();
  DM->Reopen({&DM->relation_commande, &DM->sum_commande});
  DM->sum_commande.FilterBy("n_commande=" + inQuotes(Commande_avnF->DBText3->Caption()));
  Close();
}

}  // namespace tavoline
