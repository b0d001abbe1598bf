// A day on the glass that never ends: so many orders on the program's own screens, taken, tapped, closed with
// their tickets, with a look at the history now and then. Arguments:
// the folder of the generated stores (see bench/run), the number of orders. Prints a line per tenth of them:
// what an order costs, how many widgets live, how much memory is in use.

#include <sys/resource.h>
#include <unistd.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "bench/Glass.h"
#include "bench/History.h"
#include "bench/Scene.h"
#include "data/DMU.h"
#include "sales/Commande_avnU.h"
#include "sales/RenduU.h"
#include "toolkit/theme/Theme.h"

namespace tavoline::bench {
namespace {

double processorMilliseconds() {
  struct rusage used = {};
  ::getrusage(RUSAGE_SELF, &used);
  const auto of = [](const timeval& time) {
    return 1000.0 * double(time.tv_sec) + double(time.tv_usec) / 1000;
  };
  return of(used.ru_utime) + of(used.ru_stime);
}

double megabytesInUse() {
  std::ifstream status("/proc/self/statm");
  long size = 0, resident = 0;
  status >> size >> resident;
  return double(resident) * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

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
    blocks.emplace_back((processorMilliseconds() - used) / tenth, megabytesInUse());
    std::printf("%8d %14.1f %10d %10.1f\n", done, blocks.back().first, int(QApplication::allWidgets().size()),
                blocks.back().second);
    std::fflush(stdout);
    used = processorMilliseconds();
  }
  const double slower = blocks.back().first / blocks.front().first,
               larger = blocks.back().second / blocks.front().second;
  std::printf("an order, the last tenth / the first  %8.2f %8.2f  %s\n", slower, 1.15,
              slower <= 1.15 ? "kept" : "OVER");
  std::printf("memory, the same                      %8.2f %8.2f  %s\n", larger, 1.2,
              larger <= 1.2 ? "kept" : "OVER");
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
