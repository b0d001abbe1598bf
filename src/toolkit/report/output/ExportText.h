#pragma once

#include <QtCore/QByteArray>

#include "toolkit/report/model/Document.h"

namespace tavoline::report {

/// Pages as text in UTF-8. The HTML is well-formed XML too: a box for every object where it stands on paper.
QByteArray htmlHead(const Document& document);
QByteArray htmlPage(const Document& document, std::size_t page);
QByteArray htmlFoot();

/// A record for every line of a page, fields apart by semicolons and in double quotes where they need them.
QByteArray csvPage(const Document& document, std::size_t page);

/// Lines with blanks between the texts so that columns stay columns; a form feed ends the page.
QByteArray textPage(const Document& document, std::size_t page);

}  // namespace tavoline::report
