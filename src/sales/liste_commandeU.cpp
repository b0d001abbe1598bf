#include "sales/liste_commandeU.h"

#include <QtGui/QAction>

#include "data/DMU.h"
#include "data/value/Text.h"
#include "sales/fac_clU.h"
#include "toolkit/controls/GridMenu.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

Tliste_commandeF* liste_commandeF = nullptr;

Tliste_commandeF::Tliste_commandeF()
    : TForm("liste_commandeF"),
      frxReport1(std::make_unique<Report>("Tliste_commandeF", "frxReport1", this)),
      frxReport2(std::make_unique<Report>("Tliste_commandeF", "frxReport2", this)),
      frxReport3(std::make_unique<Report>("Tliste_commandeF", "frxReport3", this)) {
  setupUi(this);
  RzPageControl1->setCornerWidget(Initialiser);  // a .ui has no word for it
  wireFilters();
  wireMenu();
  Premier->OnClick = [] { DM->commande.First(); };
  Precedent->OnClick = [] { DM->commande.Prior(); };
  Suivant->OnClick = [] { DM->commande.Next(); };
  Dernier->OnClick = [] { DM->commande.Last(); };
  Imprimer->OnClick = [this] { ImprimerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Supprimer->OnClick = [this] { SupprimerClick(); };
  Ready();
}

Tliste_commandeF::~Tliste_commandeF() = default;

void Tliste_commandeF::wireFilters() {
  const auto filter = [this] { Filtrer->Click(); };
  RzEdit1->OnEnter = filter;
  RzDateTimeEdit1->OnEnter = filter;
  RzDateTimeEdit2->OnEnter = filter;
  RzDBLookupComboBox1->OnEnter = filter;
  dates_.Wire(*this);
  Filtrer->OnClick = [this] { FiltrerClick(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
}

void Tliste_commandeF::wireMenu() {
  const auto runs = [this](QAction* entry, void (Tliste_commandeF::*handler)()) {
    connect(entry, &QAction::triggered, this,
            [this, handler] { guarded([this, handler] { (this->*handler)(); }); });
  };
  runs(FacturesClient, &Tliste_commandeF::FacturesClientClick);
  runs(ImprimerFactureClient, &Tliste_commandeF::ImprimerFactureClientClick);
  runs(Reimprimer, &Tliste_commandeF::ReimprimerClick);
  runs(AnnulerFiltres, &Tliste_commandeF::AnnulerFiltresClick);
  Actions->OnClick = [this] { GridMenu::openAt(*DBGrid1, *Actions); };
}

/// Any combination but these four leaves the filter as it was.
void Tliste_commandeF::FiltrerClick() {
  const std::string number = RzEdit1->Text();
  const std::string start = RzDateTimeEdit1->Text();
  const std::string end = RzDateTimeEdit2->Text();
  const std::string state = RzDBLookupComboBox1->Text();
  if (!number.empty() && start.empty() && state.empty())
    DM->commande.FilterBy("n_commande=" + inQuotes(number));
  if (number.empty() && start.empty() && !state.empty())
    DM->commande.FilterBy("etat_commande=" + inQuotes(state));
  if (number.empty() && !start.empty() && !state.empty() && !end.empty())
    DM->commande.FilterBy(dates_.Pieces() + "and etat_commande=" + inQuotes(state));
  if (number.empty() && !start.empty() && state.empty() && !end.empty())
    DM->commande.FilterBy(dates_.Pieces());
}

void Tliste_commandeF::InitialiserClick() {
  AnnulerFiltresClick();
  DM->commande.Close();
  DM->commande.SQL("select * from commande");
  DM->commande.Open();
}

void Tliste_commandeF::AnnulerFiltresClick() {
  DM->commande.Filtered(false);
  RzDBLookupComboBox1->Clear();
  RzEdit1->Clear();
  dates_.Clear();
}

void Tliste_commandeF::ImprimerClick() {
  frxReport3->ShowReport(true);
}

void Tliste_commandeF::FermerClick() {
  Close();
}

std::string Tliste_commandeF::ofTheCurrentOrder() {
  return "n_commande=" + inBareQuotes(DBText1->Caption());
}

void Tliste_commandeF::FacturesClientClick() {
  DM->commande.FilterBy(ofTheCurrentOrder());
  fac_clF->ShowModal();
}

void Tliste_commandeF::ImprimerFactureClientClick() {
  DM->imp_facture_vente.Reopen();
  DM->imp_facture_vente.FilterBy(ofTheCurrentOrder());
  if (DM->imp_facture_vente.Eof()) return ShowMessage("Facture incomplet");
  frxReport2->ShowReport(true);
  DM->imp_facture_vente.Filtered(false);
}

/// The guard tests the lines as the order entry left them, and not those of the current order.
void Tliste_commandeF::ReimprimerClick() {
  if (DM->relation_commande1.Eof()) return ShowMessage("Opétation incomplet");
  DM->imp_commande.Reopen();
  DM->imp_commande.FilterBy(ofTheCurrentOrder());
  frxReport1->ShowReport(true);
}

/// Deletes the order and its lines. Stock, desk and table stay as they are.
void Tliste_commandeF::SupprimerClick() {
  if (DM->commande.Eof()) return;
  if (!ConfirmDeletion()) return;
  DM->relation_commande.FilterBy(ofTheCurrentOrder());
  DM->relation_commande.First();
  while (!DM->relation_commande.Eof()) DM->relation_commande.Delete();
  DM->relation_commande.Next();
  DM->commande.Delete();
  DM->relation_commande1.Reopen();
}

}  // namespace tavoline
