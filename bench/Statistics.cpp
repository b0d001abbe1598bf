#include "bench/Statistics.h"

#include <QtWidgets/QGraphicsView>
#include <stdexcept>

#include "bench/Raw.h"
#include "bench/Scene.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "shell/MenuU.h"
#include "statistics/BestU.h"
#include "statistics/statU.h"

namespace tavoline::bench {
namespace {

constexpr int kYear = 2041, kMonth = 7;  // no order but the busy month's is of this year

// The newest orders but the history's busy day become the busy month's, all finished; today is in it.
void openMonth(Glass&) {
  const Database database = openRaw();
  const std::string year = std::to_string(kYear), newest = "(select max(rid) from commande)";
  execute(database.get(), "update commande set J = 1 + rid % 28, M = " + std::to_string(kMonth) +
                              ", A = " + year + ", etat_commande = 'Terminer' where rid between " + newest +
                              " - " + std::to_string(kOrdersOfMonth) + " and " + newest + " - " +
                              std::to_string(kBusyDay.orders) +
                              " and not exists (select 1 from commande where A = " + year + ")");
  Clock::set([] { return DateTime::of(kYear, kMonth, 15); });
}

const QWidget* canvas(const ChartPane* pane) {
  return pane->findChild<QGraphicsView*>()->viewport();
}

void openStatistics(Glass& glass) {
  glass.press(MenuF->AdvSmoothButton3, canvas(statF->RevenuChart));
  if (statF->RevenuChart->chartValues().isEmpty()) throw std::runtime_error("the month has no revenue");
}

void atStatistics(Glass& glass) {
  openMonth(glass);
  openStatistics(glass);
  glass.rest();
}

void closeStatistics(Glass& glass) {
  statF->Fermer->Click();
  Clock::set({});
  glass.press(MenuF->AdvSmoothButton6, MenuF);
  glass.rest();
}

void choosePeriod(Glass& glass, DateTime from, DateTime to) {
  statF->RevenusDepenses->Click();
  statF->RzDateTimeEdit1->Date(from);
  statF->RzDateTimeEdit2->Date(to);
  glass.rest();
}

void dayChosen(Glass& glass) {
  atStatistics(glass);
  choosePeriod(glass, DateTime::of(kYear, kMonth, 3), DateTime::of(kYear, kMonth, 3));
}

void monthChosen(Glass& glass) {
  atStatistics(glass);
  choosePeriod(glass, DateTime::of(kYear, kMonth, 1), DateTime::of(kYear, kMonth, 31));
}

void filterPeriod(Glass& glass) {
  glass.press(statF->FiltrerParDate, canvas(statF->RevenuChart));
}

void best(Glass& glass) {
  glass.press(statF->MeilleurVente, canvas(BestF->ArticleChart));
  if (BestF->ArticleChart->chartValues().isEmpty()) throw std::runtime_error("the month has no sales");
}

// The last whole year of real orders: of revenue, of best sellers.
void yearChosen(Glass& glass) {
  atStatistics(glass);
  Clock::set({});
  const int last = Clock::now().year() - 1;
  choosePeriod(glass, DateTime::of(last, 1, 1), DateTime::of(last, 12, 31));
}

void yearOfBest(Glass& glass) {
  yearChosen(glass);
  statF->MeilleurVente->Click();
  glass.rest();
}

void filterBest(Glass& glass) {
  glass.press(statF->FiltrerParDate, canvas(BestF->ArticleChart));
  if (BestF->ArticleChart->chartValues().isEmpty()) throw std::runtime_error("the year has no sales");
}

}  // namespace

const std::vector<Gesture>& statisticsGestures() {
  static const std::vector<Gesture> gestures{
      {"statistics, opened", openMonth, openStatistics, closeStatistics},
      {"statistics, a day", dayChosen, filterPeriod, closeStatistics},
      {"statistics, a month", monthChosen, filterPeriod, closeStatistics},
      {"statistics, best of a month", atStatistics, best, closeStatistics},
  };
  return gestures;
}

const std::vector<Gesture>& statisticsOfYear() {
  static const std::vector<Gesture> gestures{
      {"statistics, a year", yearChosen, filterPeriod, closeStatistics},
      {"statistics, best of a year", yearOfBest, filterBest, closeStatistics},
  };
  return gestures;
}

}  // namespace tavoline::bench
