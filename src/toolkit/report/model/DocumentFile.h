#pragma once

#include <QtCore/QString>
#include <memory>
#include <variant>

#include "toolkit/report/model/Document.h"

namespace tavoline::report {

/// Prepared pages kept in a file, whole and for themselves: the layout, the words and the logo, so that they
/// look and print the same on another day and another workstation.
constexpr char kPagesSuffix[] = "pages";
constexpr char kPagesFilter[] = "Pages préparées (*.pages)";

/// True when written; false when given up, and then no file is left. Throws Error when the file cannot be
/// written.
bool savePages(const Document& document, const QString& path, const Progress& progress = {});

/// Reads and checks what savePages wrote; null when given up. Throws Error, with a French sentence, for a
/// file that cannot be read, that is something else, or that is damaged.
std::shared_ptr<Document> loadPages(const QString& path, const Progress& progress = {});

}  // namespace tavoline::report
