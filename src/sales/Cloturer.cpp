// The closing of an order: its totals, the cash desk, the table, then the change.

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "sales/Commande_avnU.h"
#include "sales/OrderRow.h"
#include "sales/RenduU.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

void TCommande_avnF::CloturerClick() {
  finishTap();
  if (DM->operation["id_caisse_active"].isNull())
    return ShowMessage("vous n'avez pas d'accés a la caisse pour cloturer cette commande");
  Label8->Caption(DBText3->Caption());
  DM->Reopen({&DM->commande, &DM->relation_commande, &DM->relation_commande1});
  if (DM->relation_commande1.Eof()) return ShowMessage("Opétation incomplet");
  DM->commande.Edit();
  DM->commande.Post();
  DM->Table_.Edit();
  DM->Table_.Post();
  filterOrder(Label8->Caption());
  demandNumber(DM->sum_commande["SumOftotal"], "le total de la commande");
  demandNumber(DM->commande["remise"], "la remise de la commande");
  if (DM->TVA["utilisation"] == "OUI") demandNumber(DM->TVA["tva"], "le taux de TVA");
  finishOrder();
  writeDateParts();
  writeDiscount();
  writeTax();
  writeTotal();
  if (unfinished_.credited != Label8->Caption()) creditDesk();
  unfinished_.credited = Label8->Caption();
  filterTickets();
  orElse([this] { freeTable(); }, [] { DM->Table_.Cancel(); },
         "La commande est terminée et la caisse est créditée, mais la table n'est pas encore libérée.\n"
         "Touchez encore « Cloturer la Table » : la caisse ne sera pas créditée deux fois.");
  unfinished_.credited.clear();
  RenduF->ShowModal();
}

/// The order's date becomes the moment of its closing.
void TCommande_avnF::finishOrder() {
  DM->commande.Edit();
  DM->commande["login"] = DBText8->Caption();
  DM->commande["etat_commande"] = "Terminer";
  DM->commande["HT"] = DM->sum_commande["SumOftotal"];
  DM->commande["date_commande"] = Clock::now();
  DM->commande.Post();
}

void TCommande_avnF::writeTotal() {
  DM->commande.Edit();
  DM->commande["tcc"] = DM->commande["HT"] + DM->commande["TVA"] - DM->commande["remi"];
  DM->commande["id_caisse"] = MenuF->DBText4->Caption();
  DM->commande.Post();
}

void TCommande_avnF::creditDesk() {
  DM->Caisse.FilterBy("id_caise=" + inQuotes(MenuF->DBText4->Caption()));
  DM->Caisse.Edit();
  DM->Caisse["solde"] = DM->Caisse["solde"] + DM->commande["tcc"];
  orElse([] { DM->Caisse.Post(); }, [] { DM->Caisse.Cancel(); },
         "La commande est terminée, mais la caisse n'est pas encore créditée et la table n'est pas libérée.\n"
         "Touchez encore « Cloturer la Table ».");
  DM->Caisse.Filtered(false);
}

}  // namespace tavoline
