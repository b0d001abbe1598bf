#include "toolkit/report/output/Printing.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>
#include <QtPrintSupport/QPrinterInfo>
#include <algorithm>

#include "data/value/Errors.h"
#include "toolkit/forms/Messages.h"

namespace tavoline::report {

namespace {

bool askForPrinter(QPrinter& printer, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  dialog.setWindowTitle("Imprimer");
  dialog.setOption(QAbstractPrintDialog::PrintPageRange);
  return dialog.exec() == QDialog::Accepted;
}

bool printToFile(const Document& document, const QString& why, const Progress& progress) {
  const QString path = quickExport(document, progress);
  if (path.isEmpty()) return false;
  const QString told = why + " : le document est enregistré dans « " + QDir::toNativeSeparators(path) + " ».";
  ShowMessage(told.toStdString());
  return true;
}

// A job for a printer that is gone is lost without a word from anybody.
void expectPrinter(const QPrinter& printer) {
  if (!printer.outputFileName().isEmpty()) return;
  if (PrintSystem::current().printers().contains(printer.printerName())) return;
  throw Error("L'imprimante « " + printer.printerName().toStdString() +
              " » ne répond plus. Vérifiez qu'elle est allumée et branchée, puis imprimez de nouveau.");
}

// A printing system may take what was painted for a whole document and print it.
void giveUp(QPrinter& printer, std::size_t pages) {
  if (!printer.outputFileName().isEmpty()) {
    QFile::remove(printer.outputFileName());
  } else if (!printer.abort()) {
    ShowMessage("L'impression est interrompue. Ce qui en était prêt peut encore sortir de l'imprimante (" +
                std::to_string(pages) + (pages == 1 ? " page)." : " pages)."));
  }
}

}  // namespace

PrintSystem PrintSystem::real() {
  return {QPrinterInfo::availablePrinterNames, QPrinterInfo::defaultPrinterName, askForPrinter};
}

PrintSystem& PrintSystem::current() {
  static PrintSystem system = real();
  return system;
}

bool print(const Document& document, const PrintOptions& options, QWidget* parent, const Progress& progress) {
  const PrintSystem& system = PrintSystem::current();
  const bool usual = options.Printer == "Default";
  if (system.printers().isEmpty())
    return printToFile(document, "Aucune imprimante n'est installée", progress);
  if (usual && !options.ShowDialog && system.usualPrinter().isEmpty())
    return printToFile(document, "Aucune imprimante n'est choisie par défaut", progress);
  QPrinter printer(QPrinter::HighResolution);
  if (!usual) printer.setPrinterName(QString::fromStdString(options.Printer));
  printer.setDocName(QString::fromStdString(document.report().title));
  printer.setFullPage(true);
  const int pages = static_cast<int>(document.pageCount());
  printer.setFromTo(1, pages);
  if (options.ShowDialog && !system.ask(printer, parent)) return false;
  expectPrinter(printer);
  const int from = std::clamp(printer.fromPage() == 0 ? 1 : printer.fromPage(), 1, pages);
  const int to = std::clamp(printer.toPage() == 0 ? pages : printer.toPage(), from, pages);
  std::size_t gone = 0;
  const Progress counted = [&](std::size_t done, std::size_t total) {
    gone = done;
    return !progress || progress(done, total);
  };
  const bool done = paintSheets(document, printer, static_cast<std::size_t>(from - 1),
                                static_cast<std::size_t>(to - 1), counted);
  if (!done) giveUp(printer, gone);
  expectPrinter(printer);
  if (printer.printerState() == QPrinter::Error)
    throw Error("L'impression a échoué : l'imprimante signale une erreur.");
  return done;
}

}  // namespace tavoline::report
