#include "statistics/BestU.h"

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"

namespace tavoline {

TBestF* BestF = nullptr;

TBestF::TBestF() : TForm("BestF") {
  setupUi(this);
  for (LineBarChart* chart : {TypeChart, ArticleChart})
    chart->HintWhenEmpty(QStringLiteral("Aucune vente à montrer."));
  n->OnClick = [this] { nClick(); };
  Button1->OnClick = [this] { Button1Click(); };
  Ready();
}

void TBestF::nClick() {
  DM->Reopen({&DM->best1, &DM->best2});
  TypeChart->show();
  ArticleChart->show();
  const DateTime today = Clock::now();
  const std::string month =
      "M=" + inQuotes(std::to_string(today.month())) + "and A=" + inQuotes(std::to_string(today.year()));
  DM->best1.FilterBy(month);
  DM->best2.FilterBy(month);
  Button1->Click();
}

// Over a year of many orders this may last longer than a blink.
void TBestF::Button1Click() {
  ProgressBox box("Calcul des meilleures ventes…", window());
  TypeChart->Clear();
  TypeChart->AddSeries({.title = QStringLiteral("Meuiller Vente Par Type Article"),
                        .legend = QStringLiteral("Meuiller Vente Par Type Article"),
                        .axisX = QStringLiteral("Type Article"),
                        .axisY = QStringLiteral("Solde en DA")},
                       DM->best1, "SumOftcc", "Type_Produit", box.progress());
  ArticleChart->Clear();
  ArticleChart->AddSeries({.title = QStringLiteral("Meuiller vente par Article"),
                           .legend = QStringLiteral("Meuiller vente par Article"),
                           .axisX = QStringLiteral("Article"),
                           .axisY = QStringLiteral("Solde en DA"),
                           .light = true},
                          DM->best2, "SumOftcc", "designation_article", box.progress());
}

}  // namespace tavoline
