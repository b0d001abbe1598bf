#include "cash/C_depenceU.h"

#include <array>

#include "data/DMU.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TC_depenceF* C_depenceF = nullptr;

namespace {

enum class Group { Off, On, AsItStands };

struct Reason {
  std::string_view type;
  bool invoice, user;
  Group supplier;
};

constexpr std::array kReasons = {
    Reason{"Payer une Facture D'achat", true, false, Group::On},
    Reason{"Payer une charge", true, true, Group::Off},
    Reason{"Dépense personnelle", true, true, Group::AsItStands},
    Reason{"Autres", false, true, Group::AsItStands},
    Reason{"Perte", false, true, Group::Off},
};

const Reason* reasonOf(std::string_view type) {
  for (const Reason& reason : kReasons)
    if (reason.type == type) return &reason;
  return nullptr;
}

template <class... Controls>
void setShown(bool on, Controls*... controls) {
  (controls->setVisible(on), ...);
}

}  // namespace

TC_depenceF::TC_depenceF() : TForm("C_depenceF") {
  setupUi(this);
  RzDBComboBox1->OnChange = [this] { RzDBComboBox1Change(); };
  RzDBLookupComboBox1->OnChange = [this] { RzDBLookupComboBox1Click(); };
  RzDBLookupComboBox2->OnChange = [this] { RzDBLookupComboBox2Click(); };
  RzDBLookupComboBox3->OnChange = [this] { RzDBLookupComboBox3Click(); };
  RzRapidFireButton1->OnClick = [this] { RzRapidFireButton1Click(); };
  RzBitBtn1->OnClick = [this] { RzBitBtn1Click(); };
  AdvSmoothButton1->OnClick = [this] { AdvSmoothButton1Click(); };
  givesUp(DM->Depence, *this, AdvSmoothButton3);  // the desks stay filtered, and red inputs red
  Ready();
}

void TC_depenceF::ShowReason(std::string_view type) {
  const Reason* const reason = reasonOf(type);
  if (!reason) return;
  setShown(reason->invoice, Label6, DBEdit6, Label7, DBImage1, RzBitBtn1);
  setShown(reason->user, Label8, RzDBLookupComboBox1, Label9, DBEdit8);
}

void TC_depenceF::Begins() {
  begun_ = DM->Depence["ID_depence"];
}

void TC_depenceF::RzDBComboBox1Change() {
  const std::string type = RzDBComboBox1->Text();
  ShowReason(type);
  const Reason* const reason = reasonOf(type);
  if (reason && reason->supplier != Group::AsItStands)
    setShown(reason->supplier == Group::On, Label15, Label16, RzDBLookupComboBox3, RzDBEdit1);
}

void TC_depenceF::RzDBLookupComboBox1Click() {
  DBEdit8->Text(DM->utilisateur["nom"].text());
}

// The list draws on the same dataset: it shows this desk alone until RzRapidFireButton1.
void TC_depenceF::RzDBLookupComboBox2Click() {
  DM->Caisse.FilterBy("id_caise=" + inQuotes(RzDBLookupComboBox2->KeyValue().text()));
}

void TC_depenceF::RzDBLookupComboBox3Click() {
  RzDBEdit1->Text(DM->Fournisseur["nom_fournisseur"].text());
}

void TC_depenceF::RzRapidFireButton1Click() {
  DM->Caisse.Filtered(false);
}

void TC_depenceF::RzBitBtn1Click() {
  insertImage(*DBImage1);
}

void TC_depenceF::AdvSmoothButton1Click() {
  if (!mandatory({DBEdit4, RzDBComboBox1})) return;
  if (DM->Depence["ID_depence"] != begun_) return sayDropped("La dépense commencée", "Fermer");
  if (Label13->Caption() == "insert") saveInsert();
  if (Label13->Caption() == "edit") saveEdit();
}

// The desk is the one on which DM.Caisse stands, whichever the row names.
void TC_depenceF::saveInsert() {
  if (readFloat(DBEdit4->Text()) > readFloat(DBText3->Caption())) return refuseAmount();
  saveEntry(DM->Depence);
  const DateTime date = DM->Depence["date_depense"].toDateTime();
  DM->Depence.Edit();
  DM->Depence["J"] = date.day();
  DM->Depence["M"] = date.month();
  DM->Depence["A"] = date.year();
  DM->Depence.Post();
  DM->Caisse.Edit();
  debit(DM->Caisse["solde"] - DM->Depence["montant_dep"]);
  leave();
}

// Refused, the balance does not wait: the save that is repeated would take the amount twice.
void TC_depenceF::debit(const Value& balance) {
  DM->Caisse["solde"] = balance;
  orElse([] { DM->Caisse.Post(); }, [] { DM->Caisse.Cancel(); },
         "La dépense est enregistrée, mais la caisse n'est pas encore débitée.\n"
         "Touchez encore « Enregistrer » : la dépense ne sera pas comptée deux fois.");
}

// The former amount is read as a whole number where it goes back to the desk: one with decimals ends the save
// there, with the row posted and the desk in edit state.
void TC_depenceF::saveEdit() {
  const double amount = readFloat(DBEdit4->Text()), former = readFloat(Label14->Caption());
  if (amount == former) {
    saveEntry(DM->Depence);
    return leave();
  }
  if (amount > readFloat(DBText3->Caption()) + former) return refuseAmount();
  saveEntry(DM->Depence);
  DM->Caisse.Edit();
  debit(DM->Caisse["solde"] - DM->Depence["montant_dep"] + Value(readInteger(Label14->Caption())));
  leave();
}

void TC_depenceF::refuseAmount() {
  ShowMessage("solde de caisse est insuffisante !");
  DBEdit4->Red(true);
  DBEdit4->SetFocus();
}

void TC_depenceF::leave() {
  endEntry(*this);
  DM->Caisse.Filtered(false);
}

}  // namespace tavoline
