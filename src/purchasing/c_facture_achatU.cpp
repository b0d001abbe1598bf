#include "purchasing/c_facture_achatU.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>

#include "data/DMU.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "purchasing/Liste_fournisseurU.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

Tc_facture_achatF* c_facture_achatF = nullptr;

Tc_facture_achatF::Tc_facture_achatF() : TForm("c_facture_achatF") {
  setupUi(this);
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Annuler->OnClick = [this] { AnnulerClick(); };
  EnCaisser->OnClick = [this] { EnCaisserClick(); };
  ChoisirFournisseur->OnClick = [this] { ChoisirFournisseurClick(); };
  x1->OnClick = [this] { x1Click(); };
  x2->OnClick = [this] { x2Click(); };
  x3->OnClick = [this] { x3Click(); };
  x4->OnClick = [this] { x4Click(); };
  x5->OnClick = [this] { x5Click(); };
  DBGrid1->OnCellClick = [this] { DBGrid1CellClick(); };
  DBGrid1->OnCellEnter = [this](const std::string& field) { DBGrid1CellEnter(field); };
  Ready();
}

void Tc_facture_achatF::Begins() {
  number_ = DM->facture_achat["N_facture"];
}

bool Tc_facture_achatF::BackToPending() {
  if (!Visible()) return false;
  if (DM->facture_achat.State() == DatasetState::Browse && DM->Achat.State() == DatasetState::Browse)
    return false;
  showInMainArea(*this);
  beginEntry();
  return true;
}

// "Actualiser" drops what is not stored and goes to the first invoice, which is another one.
bool Tc_facture_achatF::invoiceIsStillHere() {
  if (DM->facture_achat["N_facture"] == number_) return true;
  sayDropped("La facture commencée", "Fermer");
  return false;
}

void Tc_facture_achatF::EnregistrerClick() {
  if (!mandatory({DBEdit1, DBEdit3})) return;
  if (!invoiceIsStillHere()) return;
  saveEntry(DM->facture_achat);
  enableToolbar(true);
  const DateTime date = DM->facture_achat["date_facture"].toDateTime();
  DM->facture_achat.Edit();
  DM->facture_achat["J"] = std::to_string(date.day());
  DM->facture_achat["M"] = std::to_string(date.month());
  DM->facture_achat["A"] = std::to_string(date.year());
  DM->facture_achat.Post();
}

// Stored at once: a header that is still new comes into the store with it, be it complete or not.
void Tc_facture_achatF::EnCaisserClick() {
  if (Visible() && !invoiceIsStillHere()) return;
  DM->facture_achat.Edit();
  DM->facture_achat["en_caisse"] = EnCaisser->Checked() ? "OUI" : "NON";
  DM->facture_achat.Post();
}

void Tc_facture_achatF::ChoisirFournisseurClick() {
  Liste_fournisseurF->RzRapidFireButton1->show();
  showInMainArea(*Liste_fournisseurF);
}

// The article list writes the article that is picked into the line begun here.
void Tc_facture_achatF::x1Click() {
  if (!invoiceIsStillHere()) return;
  writeOwedStock();
  mode_ = "Add";
  showLineOpen(true);
  TForm* articles = Forms::find("Liste_produitF");
  Forms::control<Button>("Liste_produitF", "RzRapidFireButton1")->show();
  showInMainArea(*articles);
  articles->installEventFilter(this);
  DBGrid1->setEnabled(true);
  DM->Achat.Insert();
  DM->Achat["n_facture"] = DM->facture_achat["N_facture"];
}

// The articles stay filtered to the one of this line, for whoever comes next.
void Tc_facture_achatF::x2Click() {
  if (DM->Achat.Eof() || !invoiceIsStillHere()) return;
  writeOwedStock();
  mode_ = "Edit";
  showLineOpen(true);
  showDecoration(true);
  DBGrid1->setEnabled(true);
  DM->Achat.Edit();
  code_ = DM->Achat["code_barre"].text();
  invoice_ = DM->facture_achat["N_facture"].text();
  formerQuantity_ = DM->Achat["qte_achat"].text();
  DM->Article.FilterBy("code_barre=" + inQuotes(code_));
  DBGrid1->EditCell("qte_achat");
}

void Tc_facture_achatF::x3Click() {
  showLineOpen(false);
  DM->Achat.Cancel();  // first, so that the grid does not give up what is being typed in a cell
  DBGrid1->setEnabled(false);
  showDecoration(false);
}

// The stock goes down whatever `desto` says, and the totals stay as they were until the next validated line.
void Tc_facture_achatF::x4Click() {
  if (DM->Achat.Eof() || !invoiceIsStillHere()) return;
  if (!ConfirmDeletion()) return;
  writeOwedStock();
  const std::pair line{DM->Achat.RecordNumber(), DM->Achat["code_barre"].text()};
  if (takenBack_ != line) takeBackStock();
  takenBack_ = line;
  orElse([] { DM->Achat.Delete(); }, [] {},
         "Le stock est repris, mais la ligne est encore dans la facture.\nSupprimez-la encore : le stock ne "
         "sera pas repris deux fois.");
  takenBack_.reset();
  DM->Article.Filtered(false);
}

void Tc_facture_achatF::takeBackStock() {
  DM->Article.FilterBy("code_barre=" + inQuotes(DM->Achat["code_barre"].text()));
  DM->Article.Edit();
  DM->Article["qte_stock"] = DM->Article["qte_stock"] - DM->Achat["qte_achat"];
  orElse([] { DM->Article.Post(); }, [] { DM->Article.Cancel(); }, "");
}

// What was posted before a failure stays.
void Tc_facture_achatF::x5Click() {
  try {
    validateLine();
  } catch (const std::exception& failure) {
    ShowMessage("Vu Que :" + std::string(failure.what()));
    x3Click();
  }
}

void Tc_facture_achatF::validateLine() {
  const bool adding = mode_ == "Add";
  if (!adding && mode_ != "Edit") return;
  if (lineOpen_ && DM->Achat.State() == DatasetState::Browse)
    throw DatasetError(
        "la ligne n'est plus en cours de saisie : « Actualiser » l'a abandonnée, ou une autre a été choisie. "
        "Rien de plus n'est enregistré.");
  writeOwedStock();
  showLineOpen(false);
  DM->Achat.Edit();
  DM->Achat["TOTAL"] = DM->Achat["qte_achat"] * DM->Achat["prix_achat"];
  DBGrid1->setEnabled(false);  // behind the total, which takes what is being typed in a cell
  showDecoration(false);
  DM->Achat.Post();
  computeTotals();
  if (adding) {
    openRemainder();
  } else {
    keepRemainder();
  }
  DM->Article.FilterBy("code_barre=" + inBareQuotes(DM->Achat["code_barre"].text()));
  if (DM->Article["desto"] == "OUI") {
    if (adding) {
      receiveStock();
    } else {
      correctStock();
    }
  }
  DM->Article.Filtered(false);
  x1->SetFocus();  // the next line
}

// The sum passes through its text. An invoice whose header is not stored has none, and an empty text is no
// amount.
void Tc_facture_achatF::computeTotals() {
  DM->counting.Reopen();
  DM->counting.FilterBy("n_facture=" + inBareQuotes(DBEdit1->Text()));
  const std::string sum = DM->counting["SumOfTOTAL"].text();
  DM->facture_achat.Edit();
  DM->facture_achat["HT"] = sum;
  DM->facture_achat.Post();
  DM->facture_achat.Edit();
  DM->facture_achat["TVA"] =
      DM->TVA["utilisation"] == "OUI" ? DM->facture_achat["HT"] * DM->TVA["tva"] / Value(100) : Value(0);
  DM->facture_achat.Post();
}

// A line added makes an invoice unpaid again; no desk is told.
void Tc_facture_achatF::openRemainder() {
  DM->facture_achat.Edit();
  DM->facture_achat["TCC"] = DM->facture_achat["HT"] + DM->facture_achat["TVA"];
  DM->facture_achat["MONTANT_VERSE"] = 0;
  DM->facture_achat["MONTANT_RESTE"] = DM->facture_achat["TCC"] - DM->facture_achat["MONTANT_VERSE"];
  DM->facture_achat["id_caisse"] = DM->operation["id_caisse_active"];
  DM->facture_achat.Post();
}

void Tc_facture_achatF::keepRemainder() {
  DM->facture_achat.Edit();
  DM->facture_achat["TCC"] = DM->facture_achat["HT"] + DM->facture_achat["TVA"];
  DM->facture_achat["MONTANT_RESTE"] = DM->facture_achat["TCC"] - DM->facture_achat["MONTANT_VERSE"];
  DM->facture_achat.Post();
}

void Tc_facture_achatF::receiveStock() {
  writeStock(DM->Achat["qte_achat"]);
}

// A price that changed alone does not reach the article.
void Tc_facture_achatF::correctStock() {
  if (DM->Achat["qte_achat"] == Value(formerQuantity_)) return;
  writeStock(Value(0) - Value(readInteger(formerQuantity_)) + DM->Achat["qte_achat"]);
}

void Tc_facture_achatF::writeStock(const Value& more) {
  const Value price = DM->Achat["prix_achat"];
  DM->Article.Edit();
  DM->Article["qte_stock"] = DM->Article["qte_stock"] + more;
  DM->Article["prix_achat"] = price;
  orElse([] { DM->Article.Post(); },
         [&] {
           owed_ = {DM->Article["code_barre"].text(), more, price};
           DM->Article.Cancel();
         },
         "La ligne est enregistrée, mais pas encore son stock.\nIl le sera avec votre prochaine action sur "
         "cette facture : ne saisissez pas la ligne une seconde fois.");
}

// Of an article that is deleted meanwhile, nothing is owed.
void Tc_facture_achatF::writeOwedStock() {
  if (!owed_) return;
  DM->Article.Reopen();
  DM->Article.FilterBy("code_barre=" + inQuotes(owed_->article));
  if (!DM->Article.Eof()) {
    DM->Article.Edit();
    DM->Article["qte_stock"] = DM->Article["qte_stock"] + owed_->quantity;
    DM->Article["prix_achat"] = owed_->price;
    orElse([] { DM->Article.Post(); }, [] { DM->Article.Cancel(); }, "");
  }
  owed_.reset();
  DM->Article.Filtered(false);
}

// What is kept of the line follows the row that the user goes to, also when he stays on it: the quantity
// typed so far then counts as the former one.
void Tc_facture_achatF::DBGrid1CellClick() {
  if (x2->isEnabled() || mode_ != "Edit") return;
  const std::string field = DBGrid1->SelectedField();
  x2Click();
  DBGrid1->EditCell(field);
}

// From the quantity to the price, and from there the line is validated.
void Tc_facture_achatF::DBGrid1CellEnter(const std::string& field) {
  if (sameName(field, "qte_achat")) DBGrid1->EditCell("prix_achat");
  if (sameName(field, "prix_achat")) x5->Click();
}

// The article list has gone: the caret stands in the quantity of the line begun.
bool Tc_facture_achatF::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide) {
    watched->removeEventFilter(this);
    QTimer::singleShot(0, this, [this] { guarded([this] { beginQuantity(); }); });
  }
  return TForm::eventFilter(watched, event);
}

void Tc_facture_achatF::beginQuantity() {
  if (DM->Achat.State() == DatasetState::Insert) DBGrid1->EditCell("qte_achat");
}

void Tc_facture_achatF::FermerClick() {
  writeOwedStock();
  DM->Article.Filtered(false);
  DM->Achat.Cancel();
  DM->facture_achat.Cancel();
  endEntry(*this);
}

void Tc_facture_achatF::AnnulerClick() {
  paintRed({DBEdit1, DBEdit3}, false);
  DM->facture_achat.Cancel();
  enableToolbar(false);
  MenuF->RzGroupBar2->setEnabled(true);
  Close();
}

// Also when the user is changed meanwhile: what was typed and not saved goes with the screen.
void Tc_facture_achatF::FormClose() {
  lineOpen_ = false;
  takenBack_.reset();
  mode_.clear();
  formerQuantity_.clear();
  code_.clear();
  invoice_.clear();
  DM->Achat.Cancel();
  DM->facture_achat.Cancel();
  DBGrid1->setEnabled(false);
  showDecoration(false);
}

void Tc_facture_achatF::showLineOpen(bool open) {
  lineOpen_ = open;
  for (Button* idle : {x1, x2, x4}) idle->setEnabled(!open);
  for (Button* pending : {x3, x5}) pending->setEnabled(open);
}

void Tc_facture_achatF::showDecoration(bool shown) {
  for (Button* decoration : {Decor1, Decor2}) decoration->setVisible(shown);
}

void Tc_facture_achatF::enableToolbar(bool enabled) {
  for (Button* tool : {x1, x2, x3, x4, x5, Decor1, Decor2}) tool->setEnabled(enabled);
}

}  // namespace tavoline
