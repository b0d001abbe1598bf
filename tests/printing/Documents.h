#pragma once

#include <map>
#include <string>

#include "toolkit/report/Support.h"

namespace tavoline::report {

/// A template of the system by "screen.report"; fails the test if it does not load.
std::shared_ptr<const Template> shippedTemplate(const std::string& name);

/// The block of an establishment, with all its lines but the tax number.
EstablishmentBlock testBlock();
/// The document that a shipped template makes of rows, which stand behind all its datasets.
Document documentOf(const std::string& name, Rows& rows);

/// Lines of one order, as the datasets of tickets and invoices have them: its own columns on every row.
Rows orderRows(int lines);
/// Orders for the journal; every third one is still open and has no amounts.
Rows journalRows(int orders);

/// Compares with tests/printing/dumps/NAME.txt; TAVOLINE_UPDATE_DUMPS=1 writes that file first.
void expectDump(const Document& document, const std::string& name);

}  // namespace tavoline::report
