#pragma once

#include <QtCore/QString>
#include <vector>

#include "toolkit/report/model/Document.h"

class QPagedPaintDevice;
class QWidget;

namespace tavoline::report {

struct ExportFormat {
  const char* suffix;  ///< "pdf", and the name by which exportDocument knows the format.
  const char* filter;  ///< As a file chooser wants it: "Document PDF (*.pdf)".
};
/// PDF, PNG, HTML, CSV and text.
const std::vector<ExportFormat>& exportFormats();

/// Writes the document in the format that the file's suffix tells, PDF for an unknown one. Each page of a PNG
/// goes to a file of its own, numbered when there are several. True when written; false when given up, and
/// then no file is left. Throws Error when the file cannot be written.
bool exportDocument(const Document& document, const QString& path, const Progress& progress = {});

/// Paints pages `from` to `to` (counted from 0, both included) on a printer or into a file, a sheet each.
bool paintSheets(const Document& document, QPagedPaintDevice& device, std::size_t from, std::size_t to,
                 const Progress& progress = {});

/// A name for a file with the document, by document, its number where it has one, and moment:
/// "Ticket 117 2024-03-09 14h00m00.pdf".
QString proposedName(const Document& document, const QString& suffix);

/// Writes the document as a PDF without questions, into the folder `impressions` beside the store, which is
/// made if need be. Gives the file's name, the proposed one with a counter where it is taken: no other
/// workstation ever has the same. Empty when given up, and then no file is left. Throws Error when it cannot
/// be written.
QString quickExport(const Document& document, const Progress& progress = {});

}  // namespace tavoline::report
