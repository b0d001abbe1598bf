#pragma once

#include <QtCore/QStringList>
#include <functional>
#include <string>

#include "toolkit/report/output/Export.h"

class QPrinter;
class QWidget;

namespace tavoline::report {

/// How a document goes to paper.
struct PrintOptions {
  bool ShowDialog = true;           ///< Whether the print dialog comes up before.
  std::string Printer = "Default";  ///< "Default": the printer that the system names as default.
  int PrintOnSheet = 0;             ///< A paper that differs from the document's; 0 for the document's own.
};

/// What the system offers for printing. Tests put their own in its place.
struct PrintSystem {
  std::function<QStringList()> printers;  ///< Names of those that are there now.
  std::function<QString()> usualPrinter;  ///< The one named as default; empty for none.
  /// Lets the user choose printer and pages; false when he gives up.
  std::function<bool(QPrinter& printer, QWidget* parent)> ask;

  static PrintSystem& current();
  static PrintSystem real();
};

/// Prints the document. Without any printer, and without a default one where nobody is asked, it goes to a
/// PDF in the folder `impressions` beside the store, and a message says so. False when the user gave up.
/// Throws Error when printer or file fail.
bool print(const Document& document, const PrintOptions& options, QWidget* parent,
           const Progress& progress = {});

}  // namespace tavoline::report
