#include "sales/OrderRow.h"

#include "data/DMU.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {

void writeDateParts() {
  const DateTime date = DM->commande["date_commande"].toDateTime();
  DM->commande.Edit();
  DM->commande["J"] = std::to_string(date.day());
  DM->commande["M"] = std::to_string(date.month());
  DM->commande["A"] = std::to_string(date.year());
  DM->commande.Post();
}

void writeDiscount() {
  DM->commande.Edit();
  DM->commande["remi"] = DM->commande["remise"] * DM->commande["HT"] / 100;
  DM->commande.Post();
}

void writeTax() {
  DM->commande.Edit();
  if (DM->TVA["utilisation"] == "OUI")
    DM->commande["TVA"] = DM->commande["HT"] * DM->TVA["tva"] / 100;
  else
    DM->commande["TVA"] = 0;
  DM->commande.Post();
}

void filterOrder(const std::string& number) {
  DM->commande.FilterBy("n_commande=" + inQuotes(number));
  DM->sum_commande.FilterBy("n_commande=" + inQuotes(number));
  if (DM->commande.Eof())
    throw DatasetError(
        "La commande n° " + number +
        " a été supprimée par un autre poste : rien n'est enregistré. Supprimez ses lignes par "
        "« Supp », puis quittez-la par « Fermer ».");
}

void filterTable(const std::string& name) {
  DM->Table_.FilterBy("table=" + inBareQuotes(name));
}

}  // namespace tavoline
