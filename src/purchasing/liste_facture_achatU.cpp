#include "purchasing/liste_facture_achatU.h"

#include <QtGui/QAction>

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "purchasing/c_facture_achatU.h"
#include "purchasing/montantU.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

Tliste_facture_achatF* liste_facture_achatF = nullptr;

namespace {

constexpr std::string_view kOtherDesk = "c'est pas le même caisse que tu a déjà sélectionner  ";
constexpr std::string_view kNothingLeft = "le montant reste =0 !";

QColor paymentColour(Dataset& rows, std::size_t record, const std::string& field) {
  if (!sameName(field, "MONTANT_RESTE") && !sameName(field, "N_facture")) return {};
  const auto value = [&](const char* name) {
    return rows.ValueAt(record, static_cast<std::size_t>(rows.ColumnIndex(name)));
  };
  const Value rest = value("MONTANT_RESTE");
  if (rest.isNull()) return {};
  if (rest <= Value(0)) return QColor(theme().freeSoft);
  return QColor(value("MONTANT_VERSE") > Value(0) ? theme().waitingSoft : theme().wrongSoft);
}

}  // namespace

Tliste_facture_achatF::Tliste_facture_achatF()
    : TForm("liste_facture_achatF"),
      frxReport2(std::make_unique<Report>("Tliste_facture_achatF", "frxReport2", this)) {
  setupUi(this);
  const auto runs = [this](QAction* entry, void (Tliste_facture_achatF::*handler)()) {
    connect(entry, &QAction::triggered, this,
            [this, handler] { guarded([this, handler] { (this->*handler)(); }); });
  };
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Supprimer->OnClick = [this] { SupprimerClick(); };
  Imprimer->OnClick = [this] { ImprimerClick(); };
  Filtrer->OnClick = [this] { FiltrerClick(); };
  RzEdit1->OnEnter = RzEdit2->OnEnter = RzDBLookupComboBox1->OnEnter = [this] { Filtrer->Click(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
  DBGrid1->OnCellColour = paymentColour;
  runs(AnnulerFiltres, &Tliste_facture_achatF::InitialiserClick);
  runs(MontantVerse, &Tliste_facture_achatF::MontantVerseClick);
  quits(DM->facture_achat, *this, Quitter);
  navigates(DM->facture_achat, Premier, Precedent, Suivant, Dernier);
  Ready();
}

Tliste_facture_achatF::~Tliste_facture_achatF() = default;

std::string Tliste_facture_achatF::ofTheCurrentInvoice() {
  return "n_facture=" + inBareQuotes(DM->facture_achat["N_facture"].text());
}

bool Tliste_facture_achatF::atAnotherDesk() {
  return DM->facture_achat["id_caisse"].get() != DM->operation["id_caisse_active"].get();
}

void Tliste_facture_achatF::FiltrerClick() {
  const std::string number = RzEdit1->Text(), date = RzEdit2->Text(),
                    supplier = RzDBLookupComboBox1->KeyValue().text();
  const bool n = !number.empty(), d = !date.empty(), s = !supplier.empty();
  const std::string byNumber = "n_facture=" + inQuotes(number), byDate = "date_facture=" + inQuotes(date),
                    bySupplier = "code_fournisseur=" + inQuotes(supplier);
  if (n && !d && !s) DM->facture_achat.FilterBy("N_facture=" + inQuotes(number));
  if (!n && d && !s) DM->facture_achat.FilterBy(byDate);
  if (!n && !d && s) DM->facture_achat.FilterBy(bySupplier);
  if (n && d && !s) DM->facture_achat.FilterBy(byNumber + "and " + byDate);
  if (n && !d && s) DM->facture_achat.FilterBy(byNumber + "and " + bySupplier);
  if (!n && d && s) DM->facture_achat.FilterBy(byDate + "and " + bySupplier);
  if (n && d && s) DM->facture_achat.FilterBy(byNumber + "and " + bySupplier + "and " + byDate);
}

void Tliste_facture_achatF::InitialiserClick() {
  DM->facture_achat.Filtered(false);
  RzDBLookupComboBox1->KeyValue(Value());
  RzEdit1->Clear();
  RzEdit2->Clear();
}

// The box is cleared while the list still stands on another invoice, which takes the "NON" of that change.
void Tliste_facture_achatF::AjouterClick() {
  if (c_facture_achatF->BackToPending()) return;
  DM->F.Reopen();
  c_facture_achatF->EnCaisser->Checked(false);
  showInMainArea(*c_facture_achatF);
  DM->facture_achat.Insert();
  DM->facture_achat["date_facture"] = Clock::today();
  DM->facture_achat["login"] = DBText3->Caption();
  const std::string number = nextNumber(*DBText1).text();
  c_facture_achatF->DBEdit1->Text(number);
  DM->Achat.FilterBy("n_facture=" + inBareQuotes(number));
  c_facture_achatF->Begins();
  beginEntry();
}

void Tliste_facture_achatF::ModifierClick() {
  if (c_facture_achatF->BackToPending()) return;
  if (DM->facture_achat["en_caisse"] == "OUI" && atAnotherDesk()) {
    ShowMessage(kOtherDesk);
    MenuF->RzGroupBar2->setEnabled(true);
    return;
  }
  DM->Achat.FilterBy(ofTheCurrentInvoice());
  showInMainArea(*c_facture_achatF);
  beginEntry();
  DM->facture_achat.Edit();
  c_facture_achatF->Begins();
}

// Nothing goes back to the desk, even if money was paid.
void Tliste_facture_achatF::SupprimerClick() {
  DM->Achat.Reopen();
  DM->Achat.FilterBy(ofTheCurrentInvoice());
  if (!DM->Achat.Eof()) return ShowMessage("Vous devez d'abord supprimer le detail de cette facture");
  if (ConfirmDeletion()) DM->facture_achat.Delete();
  DM->Achat.Filtered(false);
}

void Tliste_facture_achatF::ImprimerClick() {
  DM->imp_fac_achat.Reopen();
  DM->imp_fac_achat.FilterBy(ofTheCurrentInvoice());
  if (DM->imp_fac_achat.Eof()) return ShowMessage("Opétation incomplet");
  frxReport2->ShowReport(true);
}

// An invoice whose box was clicked off ("NON") is not paid here, and nothing is said.
void Tliste_facture_achatF::MontantVerseClick() {
  const std::string mark = DM->facture_achat["en_caisse"].text();
  if (mark == "OUI") payAtDesk();
  if (mark.empty()) payOutsideDesk();
}

// What remains as it is displayed; an invoice without a validated line shows nothing, which is no number.
Value Tliste_facture_achatF::remainder() {
  return Value(DBText2->Caption()).toFloat();
}

// The dialog takes the filter off as it closes, so what is looked at behind it is the first invoice.
void Tliste_facture_achatF::payAtDesk() {
  if (atAnotherDesk()) return ShowMessage(kOtherDesk);
  if (remainder() > Value(0)) {
    DM->facture_achat.FilterBy(ofTheCurrentInvoice());
    MontantF->Label7->Caption(DM->facture_achat["MONTANT_VERSE"].text());
    MontantF->ShowModal();
  } else {
    ShowMessage(kNothingLeft);
  }
  if (remainder() < Value(0)) giveExcessBack();
}

// The amount paid before is left as the last payment at a desk set it.
void Tliste_facture_achatF::payOutsideDesk() {
  if (remainder() <= Value(0)) return ShowMessage(kNothingLeft);
  DM->facture_achat.FilterBy(ofTheCurrentInvoice());
  MontantF->ShowModal();
}

void Tliste_facture_achatF::giveExcessBack() {
  const Value invoice = DM->facture_achat["N_facture"];
  DM->Caisse.FilterBy("id_caise=" + inBareQuotes(DM->operation["id_caisse_active"].text()));
  if (givenBackOn_ != invoice) {
    DM->Caisse.Edit();
    DM->Caisse["solde"] = DM->Caisse["solde"] - DM->facture_achat["MONTANT_RESTE"];
    orElse(
        [] { DM->Caisse.Post(); }, [] { DM->Caisse.Cancel(); },
        "Le trop-payé n'est pas encore rendu à la caisse.\nChoisissez encore « Declaré le montant Versé ».");
    givenBackOn_ = invoice;
  }
  DM->facture_achat.Edit();
  DM->facture_achat["MONTANT_VERSE"] = DM->facture_achat["TCC"];
  DM->facture_achat["MONTANT_RESTE"] = 0;
  orElse([] { DM->facture_achat.Post(); }, [] { DM->facture_achat.Cancel(); },
         "Le trop-payé est rendu à la caisse, mais la facture ne le montre pas encore.\nChoisissez encore « "
         "Declaré le montant Versé » : il ne sera pas rendu deux fois.");
  givenBackOn_ = Value();
  DM->Caisse.Filtered(false);
}

}  // namespace tavoline
