// The save of a closing: its row, the orders that it covers, the two balances, the loss, the sheet. One write
// after the other and none of them undone: what fails leaves the earlier ones in place.

#include <string>
#include <utility>

#include "cash/CaiseU.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

namespace {

void writeDayOf(Dataset& rows, DateTime date) {
  rows["J"] = date.day();
  rows["M"] = date.month();
  rows["A"] = date.year();
}

}  // namespace

void TcaiseF::Begins() {
  begunAt_ = DM->Caise["date_lancement"];
  begunNumber_ = DM->Caise["n_caise"];
  left_.reset();
  credited_.reset();
  lossWritten_ = false;
}

// What the store has refused must not get into it by the way, with the next filter or the next row.
void TcaiseF::dropRefused() {
  if (std::exchange(balanceWaits_, false)) DM->Caisse.Cancel();
  if (std::exchange(lossWaits_, false)) DM->Depence.Cancel();
}

void TcaiseF::RzBitBtn7Click() {
  if (Label9->Caption() != "insert") return;
  if (!amountsAreTyped()) return;
  if (readFloat(DBText6->Caption()) < 0) return;
  if (!closingIsStillHere()) return;
  dropRefused();
  postClosing();
  markOrders();
  moveBalances();
  if (readFloat(DBEdit4->Text()) < 0 && !lossWritten_) writeLoss();
  printSheet();
  DM->Caisse.Filtered(false);
  Close();
  Label9->Caption("");
  MenuF->RzGroupBar2->setEnabled(true);
}

bool TcaiseF::amountsAreTyped() {
  const bool taken = !DBEdit3->Text().empty(), counted = !DBEdit1->Text().empty();
  if (!taken) {
    ShowMessage("veuillez saisir le montant prélevement ! ");
    DBEdit3->SetFocus();
  }
  if (!counted) {
    ShowMessage("veuillez saisir le montant montant en caisse ");
    DBEdit1->SetFocus();
  }
  return taken && counted;
}

// "Actualiser" drops a row that is not posted and stands on another closing, which must not be overwritten.
bool TcaiseF::closingIsStillHere() {
  if (DM->Caise["date_lancement"] == begunAt_ && DM->Caise["n_caise"] == begunNumber_) return true;
  sayDropped("La clôture commencée", "Annuler");
  return false;
}

// The first Post takes the typed amounts with it.
void TcaiseF::postClosing() {
  DM->Caise.Edit();
  DM->Caise["total_recettes"] = Label10->Caption();
  book_ = bookBalance();
  DM->Caise["solde_caisse"] = *book_;
  DM->Caise.Post();
  const DateTime begun = DM->Caise["date_lancement"].toDateTime();
  DM->Caise.Edit();
  writeDayOf(DM->Caise, begun);
  DM->Caise["total_depense"] = readFloat(DBText6->Caption());
  DM->Caise.Post();
}

void TcaiseF::markOrders() {
  DM->X.ParamByName("x") = readDateTime(DBText3->Caption());
  DM->X.ParamByName("y") = readDateTime(DBText1->Caption());
  DM->X.ParamByName("z") = Label5->Caption();
  DM->X.ExecSQL();
}

// Whether a desk was found is not looked at: where there is none, a row is added.
void TcaiseF::moveBalances() {
  DM->Caisse.FilterBy("id_caise=" + inBareQuotes(Label5->Caption()));
  const Value kept = DM->Caise["fond_caisse"], taken = DM->Caise["prelevement_caise"];
  if (!DM->Caise.Eof() && left_ != kept) writeBalance(kept);
  left_ = kept;
  DM->Caisse.FilterBy("select='OUI'and general='OUI'");
  if (!DM->Caise.Eof() && credited_ != taken)
    writeBalance(DM->Caisse["solde"] + taken - credited_.value_or(Value(0)));
  credited_ = taken;
}

void TcaiseF::writeBalance(const Value& amount) {
  balanceWaits_ = true;
  DM->Caisse.Edit();
  DM->Caisse["solde"] = amount;
  DM->Caisse.Post();
  balanceWaits_ = false;
}

// No desk pays for it: the count that has replaced its balance is short by as much already.
void TcaiseF::writeLoss() {
  DM->D.Reopen();
  DM->Depence.Insert();
  lossWaits_ = true;
  DM->Depence["ID_depence"] = nextNumber(*DBText5);
  DM->Depence["date_depense"] = Clock::now();
  DM->Depence["type_depnce"] = "Perte";
  DM->Depence["montant_dep"] = Value(0) - DM->Caise["ecat_caise"];
  DM->Depence["login"] = DM->operation["code_utilisateur"];
  DM->Depence["id_caisse"] = DM->Caise["id_caisse"];
  writeDayOf(DM->Depence, Clock::now());
  DM->Depence.Post();
  lossWaits_ = false;
  lossWritten_ = true;
}

void TcaiseF::printSheet() {
  try {
    frxReport7->PrepareReport(true);
    frxReport7->PrintOptions.ShowDialog = false;
    frxReport7->Print();
  } catch (const Error& failure) {
    throw Error(
        failure.what() + std::string("\n\nLa clôture est enregistrée, seule sa feuille manque. Touchez "
                                     "encore « Enregistrer la clôture » pour l'imprimer : rien n'est "
                                     "compté deux fois. « Annuler » quitte sans l'imprimer."),
        failure.detail());
  }
}

// --- All desks at once

// Nothing ever gives Label8 a text, so that a closing of all desks ends here.
void TcaiseF::RzBitBtn4Click() {
  if (Label9->Caption() != "insert") return;
  if (Label8->Caption().empty()) {
    ShowMessage("Total des Ventes  =0 ! ");
    return AdvSmoothButton5Click();
  }
  if (DBEdit1->Text() == "0" || DBEdit1->Text().empty()) {
    ShowMessage("veuillez saisir le montant prélevement ");
    return DBEdit1->SetFocus();
  }
  if (!closingIsStillHere()) return;
  postAllDesks();
  if (Label8->Caption() != DBEdit1->Text()) {
    if (RzDBMemo1->Text().empty()) {
      ShowMessage("veuillez saisir le motif de cette écart ");
      Label13->setVisible(true);
      RzDBMemo1->setVisible(true);
      return RzDBMemo1->SetFocus();
    }
    postAllDesks();
  }
  finishAllDesks();
}

void TcaiseF::postAllDesks() {
  DM->Caise.Edit();
  DM->Caise["total_caise"] = Label8->Caption();
  DM->Caise["ecat_caise"] = DM->Caise["total_caise"] - DM->Caise["prelevement_caise"];
  DM->Caise.Post();
}

void TcaiseF::finishAllDesks() {
  DM->XX.ParamByName("x") = readDateTime(DBText3->Caption());
  DM->XX.ParamByName("y") = readDateTime(DBText1->Caption());
  DM->XX.ExecSQL();
  hideReason();
  Close();
}

}  // namespace tavoline
