// A day on the glass that never ends: so many orders on the program's own screens, taken, tapped, closed with
// their tickets, with a look at the history now and then. Arguments:
// the folder of the generated stores (see bench/run), the number of orders. Prints a line per tenth of them:
// what an order costs, how many widgets live, how much memory is in use.

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "bench/Glass.h"
#include "bench/History.h"
#include "bench/Process.h"
#include "bench/Scene.h"
#include "data/DMU.h"
#include "sales/Commande_avnU.h"
#include "sales/RenduU.h"
#include "toolkit/theme/Theme.h"

namespace tavoline::bench {
namespace {

void whenModal(const std::function<void(QWidget&)>& act) {
  QTimer::singleShot(5, qApp, [act] {
    QWidget* modal = QApplication::activeModalWidget();
    modal ? act(*modal) : whenModal(act);
  });
}

/// "Cloturer la Table", the change, the ticket looked at and left.
void closeOrder(Glass& glass) {
  whenModal([](QWidget&) {
    whenModal([](QWidget& preview) { preview.close(); });
    RenduF->Enregistrer->click();
  });
  Commande_avnF->Cloturer->click();
  glass.rest();
}

void serve(Glass& glass) {
  glass.takeTable();
  for (std::size_t tile = 0; tile < glass.tiles(); ++tile) {
    glass.lower(tile);
    glass.lift();
    glass.paint();
  }
  closeOrder(glass);
}

void play(Glass& glass, const Gesture& gesture) {
  gesture.before(glass);
  gesture.gesture(glass);
  glass.rest();
  gesture.after(glass);
}

void day(int orders) {
  Glass glass;
  glass.logIn();
  const int tenth = std::max(orders / 10, 1);
  std::printf("%8s %14s %10s %10s\n", "orders", "CPU ms each", "widgets", "RSS MB");
  double used = processorMilliseconds();
  std::vector<std::pair<double, double>> blocks;  // processor time, memory
  for (int done = 1; done <= orders; ++done) {
    serve(glass);
    if (done % 25 == 0)
      for (const Gesture& gesture : historyGestures()) play(glass, gesture);
    if (done % tenth != 0) continue;
    blocks.emplace_back((processorMilliseconds() - used) / tenth, residentMegabytes());
    std::printf("%8d %14.1f %10d %10.1f\n", done, blocks.back().first, int(QApplication::allWidgets().size()),
                blocks.back().second);
    std::fflush(stdout);
    used = processorMilliseconds();
  }
  judge("an order, the last tenth / the first", blocks.back().first / blocks.front().first, 1.15);
  judge("memory, the same", blocks.back().second / blocks.front().second, 1.2);
}

}  // namespace
}  // namespace tavoline::bench

int main(int count, char** arguments) try {
  using namespace tavoline::bench;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  tavoline::applyTheme(*qApp);
  if (count < 3) throw std::runtime_error("the folder of a store and a number of orders are wanted");
  const Scene scene(arguments[1], 1000);
  scene.enter();
  day(std::atoi(arguments[2]));
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return EXIT_FAILURE;
}
