#include "statistics/statU.h"

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "statistics/BestU.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

TstatF* statF = nullptr;

TstatF::TstatF() : TForm("statF") {
  setupUi(this);
  dates_.Wire(*this);
  RevenuChart->HintWhenEmpty(QStringLiteral("Aucune recette à montrer."));
  DepenseChart->HintWhenEmpty(QStringLiteral("Aucune dépense à montrer."));
  EtatPie->HintWhenEmpty(QStringLiteral("Aucune caisse. L'argent de chacune paraîtra ici."));
  FiltreMoisActuel->OnClick = [this] { FiltreMoisActuelClick(); };
  FiltrerParDate->OnClick = [this] { FiltrerParDateClick(); };
  EtatCaisses->OnClick = [this] { EtatCaissesClick(); };
  RevenusDepenses->OnClick = [this] { RevenusDepensesClick(); };
  MeilleurVente->OnClick = [this] { MeilleurVenteClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void TstatF::FormShow() {
  FiltreMoisActuel->Click();
  Dates->hide();
  dates_.Clear();
  draw();
}

void TstatF::FiltreMoisActuelClick() {
  DM->Reopen({&DM->Calcul_dep, &DM->stat_caisse});
  showPanes(true);
  EtatPie->hide();
  const DateTime today = Clock::now();
  const std::string month = std::to_string(today.month()), year = std::to_string(today.year());
  DM->Reopen({&DM->S_01, &DM->D_01});
  filterDays("j>=" + inQuotes("1") + "and j<=" + inQuotes("31") + "and M=" + inQuotes(month) +
             "and A=" + inQuotes(year));
  totalPeriod({"1", month, year}, {"31", month, year});
}

void TstatF::FiltrerParDateClick() {
  if (RzDateTimeEdit1->Text().empty()) return ShowMessage("veuillez sélectionner une date !");
  if (Mode->Caption() == "1") {
    totalPeriod(dates_.From(), dates_.To());
    DM->Reopen({&DM->S_01, &DM->D_01});
    filterDays(dates_.Pieces());
    totalPeriod(dates_.From(), dates_.To());
    draw();
  }
  if (Mode->Caption() == "2") {
    DM->Reopen({&DM->best1, &DM->best2});
    DM->best1.FilterBy(dates_.MonthPieces());
    DM->best2.FilterBy(dates_.MonthPieces());
    BestF->Button1->Click();
  }
}

void TstatF::EtatCaissesClick() {
  BestF->Close();
  DM->stat_caisse.Reopen();
  showPanes(false);
  EtatPie->Clear();
  EtatPie->AddSeries(QStringLiteral("Etat Des Caisses"), DM->stat_caisse, "SumOfsolde", "nom_caisse");
  EtatPie->show();
  Dates->hide();
  Mode->Caption("");
}

// Filters and totals stay: back from another view, the last period is shown.
void TstatF::RevenusDepensesClick() {
  Mode->Caption("1");
  EtatPie->hide();
  showPanes(true);
  BestF->Close();
  draw();
  Dates->show();
}

void TstatF::MeilleurVenteClick() {
  Mode->Caption("2");
  EtatPie->hide();
  showPanes(false);
  Dates->show();
  BestF->Dock(ChartPanel);
  BestF->Show();
  BestF->n->Click();
}

void TstatF::FermerClick() {
  BestF->Close();
  Close();
}

// Neither pane goes on to show another period where the rows of one cannot be read.
void TstatF::draw() {
  RevenuChart->Clear();
  DepenseChart->Clear();
  RevenuChart->AddSeries({.title = QStringLiteral("Revenu"),
                          .legend = QStringLiteral("Revenu"),
                          .axisX = QStringLiteral("Jours"),
                          .axisY = QStringLiteral("Solde en DA")},
                         DM->S_01, "sumoftcc", "j");
  DepenseChart->AddSeries({.title = QStringLiteral("Dépenses"),
                           .legend = QStringLiteral("Depence"),
                           .axisX = QStringLiteral("Jours"),
                           .axisY = QStringLiteral("Solde en DA"),
                           .light = true},
                          DM->D_01, "SumOfmontant_dep", "j");
}

void TstatF::showPanes(bool on) {
  Revenu->setVisible(on);
  Depense->setVisible(on);
}

// Days, months and years are three ranges, each for itself.
void TstatF::totalPeriod(const DateFilter::Parts& from, const DateFilter::Parts& to) {
  for (Dataset* total : {static_cast<Dataset*>(&DM->sum_recette), static_cast<Dataset*>(&DM->sum_depense)}) {
    total->Close();
    total->ParamByName("x") = from.day;
    total->ParamByName("y") = to.day;
    total->ParamByName("z") = from.month;
    total->ParamByName("m") = to.month;
    total->ParamByName("n") = from.year;
    total->ParamByName("l") = to.year;
    total->Open();
  }
}

void TstatF::filterDays(const std::string& period) {
  DM->S_01.FilterBy(period);
  DM->D_01.FilterBy(period);
}

}  // namespace tavoline
