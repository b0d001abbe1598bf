// What purchases must not cost. Arguments: the folder of generated stores, one below it for each number of
// invoices (see bench/purchases). Prints the medians of both sizes and their ratio.

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <stdexcept>

#include "bench/Glass.h"
#include "bench/Process.h"
#include "catalogue/Liste_produitU.h"
#include "data/DMU.h"
#include "purchasing/Liste_fournisseurU.h"
#include "purchasing/c_facture_achatU.h"
#include "purchasing/liste_facture_achatU.h"
#include "purchasing/montantU.h"
#include "shell/MenuU.h"
#include "toolkit/theme/Theme.h"

namespace tavoline::bench {
namespace {

namespace fs = std::filesystem;
constexpr int kSmall = 200, kLarge = 200000;  // invoices
constexpr int kRounds = 40;

/// Milliseconds of each gesture by name, in the order of their names.
using Times = std::map<std::string, std::vector<double>>;

class Buyer {
 public:
  explicit Buyer(Times& times) : times_(times) {
    glass_.logIn();
    DM->TVA.Edit();
    DM->TVA["utilisation"] = "OUI";
    DM->TVA.Post();
  }

  void openList() {
    timed("open the list", *liste_facture_achatF->DBGrid1, [] { MenuF->AdvSmoothButton4->Click(); });
    liste_facture_achatF->Quitter->Click();
    glass_.rest();
  }

  /// A new invoice, and its lines.
  void enter(int lines) {
    MenuF->AdvSmoothButton4->Click();
    liste_facture_achatF->Ajouter->Click();
    c_facture_achatF->DBEdit3->Text("F001");
    c_facture_achatF->DBEdit4->Text("Boissons du Sahel");
    c_facture_achatF->Enregistrer->Click();
    c_facture_achatF->EnCaisser->Checked(true);
    for (int line = 0; line < lines; ++line) {
      c_facture_achatF->x1->Click();
      Liste_produitF->RzRapidFireButton1->Click();
      glass_.rest();
      QTest::keyClicks(QApplication::focusWidget(), "2");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
      glass_.rest();
      QTest::keyClicks(QApplication::focusWidget(), "35");
      timed("validate a line", *c_facture_achatF->DBGrid1, [] { c_facture_achatF->x5->Click(); });
      glass_.rest();
    }
    c_facture_achatF->Fermer->Click();
    glass_.rest();
  }

  /// The newest invoice: from the press in the dialog to the list painted behind it.
  void pay() {
    DM->facture_achat.Last();
    glass_.rest();
    QTimer::singleShot(0, qApp, [this] {
      glass_.rest();
      MontantF->DBEdit1->Text(MontantF->DBText1->Caption());
      timed("pay an invoice", *liste_facture_achatF->DBGrid1, [] { MontantF->Enregistrer->Click(); });
    });
    liste_facture_achatF->MontantVerse->trigger();
    liste_facture_achatF->Quitter->Click();
    glass_.rest();
  }

  void search() {
    MenuF->AdvSmoothButton8->Click();
    Liste_fournisseurF->RzEdit2->SetFocus();
    glass_.rest();
    for (const char key : {'b', 'o', 'i', 's', 's', 'o', 'n', 's'}) {
      timed("a key in the suppliers' search", *Liste_fournisseurF->DBGrid1, [key] {
        QTest::sendKeyEvent(QTest::Click, Liste_fournisseurF->RzEdit2, Qt::Key(std::toupper(key)), key, {});
      });
      glass_.rest();
    }
    Liste_fournisseurF->Quitter->Click();
    glass_.rest();
  }

 private:
  template <class Gesture>
  void timed(const std::string& name, DBGrid& grid, const Gesture& gesture) {
    paints_.forget();
    const auto began = std::chrono::steady_clock::now();
    gesture();
    while (paints_.of(grid.viewport()) == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - began;
    times_[name].push_back(took.count());
  }

  Times& times_;
  Glass glass_;
  Paints paints_;
};

Times measured(const fs::path& data, int invoices) {
  const fs::path folder = data / (std::to_string(invoices) + "-in-use");
  fs::remove_all(folder);
  fs::create_directories(folder);
  fs::copy_file(data / std::to_string(invoices) / "BDD.mdb", folder / "BDD.mdb");
  fs::current_path(folder);
  Times times;
  {
    Buyer buyer(times);
    for (int round = 0; round < kRounds; ++round) {
      buyer.openList();
      buyer.enter(3);
      buyer.pay();
      if (round % 5 == 0) buyer.search();
    }
  }
  fs::current_path(data);
  fs::remove_all(folder);
  return times;
}

}  // namespace
}  // namespace tavoline::bench

int main(int count, char** arguments) try {
  using namespace tavoline::bench;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  tavoline::applyTheme(*qApp);
  if (count < 2) throw std::runtime_error("bench: the folder of stores is wanted");
  const fs::path data = fs::absolute(arguments[1]);
  const Times small = measured(data, kSmall);
  for (const auto& [name, times] : measured(data, kLarge))
    std::printf("%-32s %7.2f ms  p99 %7.2f ms   of %d invoices %7.2f ms   ratio %.2f\n", name.c_str(),
                percentile(times, 0.5), percentile(times, 0.99), kSmall, percentile(small.at(name), 0.5),
                percentile(times, 0.5) / percentile(small.at(name), 0.5));
  return 0;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "%s\n", failure.what());
  return 1;
}
