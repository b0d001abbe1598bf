#include "bench/History.h"

#include <QtTest/QTest>
#include <QtWidgets/QScrollBar>
#include <stdexcept>
#include <string>

#include "bench/Scene.h"
#include "data/DMU.h"
#include "sales/liste_commandeU.h"

namespace tavoline::bench {
namespace {

void nothing(Glass&) {}

void open(Glass& glass) {
  glass.openHistory();
}

void openAndRest(Glass& glass) {
  glass.openHistory();
  glass.countHistory();
}

void close(Glass& glass) {
  glass.pressInHistory(liste_commandeF->Initialiser);
  glass.countHistory();
  glass.closeHistory();
}

void busyDay(Glass& glass) {
  openAndRest(glass);
  liste_commandeF->RzDateTimeEdit1->Date(DateTime::of(kBusyDay.year, kBusyDay.month, kBusyDay.day));
  glass.rest();
}

void filter(Glass& glass) {
  glass.pressInHistory(liste_commandeF->Filtrer);
}

void expectBusyDay() {
  if (DM->commande.RecordCount() != std::size_t(kBusyDay.orders))
    throw std::runtime_error("the busy day has " + std::to_string(DM->commande.RecordCount()) + " orders");
}

void busyDayFound(Glass& glass) {
  busyDay(glass);
  filter(glass);
  expectBusyDay();
  glass.rest();
}

void oneNumber(Glass& glass) {
  openAndRest(glass);
  liste_commandeF->RzEdit1->Text("500");
  glass.rest();
}

void finished(Glass& glass) {
  openAndRest(glass);
  liste_commandeF->RzDBLookupComboBox1->Text("Terminer");
  glass.rest();
}

void pageDown(Glass& glass) {
  glass.inHistory([] { QTest::keyClick(liste_commandeF->DBGrid1, Qt::Key_PageDown); });
}

void last(Glass& glass) {
  glass.pressInHistory(liste_commandeF->Dernier);
}

void scrollToTheEnd(Glass& glass) {
  glass.inHistory([] {
    QScrollBar* bar = liste_commandeF->DBGrid1->verticalScrollBar();
    bar->setValue(bar->maximum());
  });
}

void scrollToTheMiddle(Glass& glass) {
  glass.inHistory([] {
    QScrollBar* bar = liste_commandeF->DBGrid1->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
  });
}

}  // namespace

const std::vector<Gesture>& historyGestures() {
  static const std::vector<Gesture> gestures{
      {"history, open", nothing, open, close},
      {"history, page down", openAndRest, pageDown, close},
      {"history, to the middle", openAndRest, scrollToTheMiddle, close},
      {"history, to the end", openAndRest, scrollToTheEnd, close},
      {"history, last order", openAndRest, last, close},
      {"history, one number", oneNumber, filter, close},
      {"history, a day", busyDay, filter, [](Glass& glass) { expectBusyDay(), close(glass); }},
      {"history, print a day", busyDayFound, [](Glass& glass) { glass.printJournal(); }, close},
      {"history, all finished", finished, filter, close},
      {"history, open and last", nothing, [](Glass& glass) { open(glass), last(glass); }, close},
  };
  return gestures;
}

}  // namespace tavoline::bench
