#pragma once

#include "toolkit/report/Support.h"

namespace tavoline::report {

/// The template of a document that uses every kind of object: 85 x 100 mm, 14 rows on the first page and 17
/// on the next ones, a barcode at each foot.
std::shared_ptr<const Template> sampleTemplate();
/// That document with rows of a number, "ligne N" and, on every second one, a remark.
Document sampleDocument(int rows);
Rows sampleRows(int rows);

}  // namespace tavoline::report
