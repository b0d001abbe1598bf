#pragma once

#include <string>
#include <vector>

#include "toolkit/report/model/Document.h"

namespace tavoline::report {

/// A text of a page with its place, for everything that reads a page rather than paints it.
struct Word {
  Rect rect;  ///< Units.
  std::string text;
  HAlign hAlign = HAlign::Left;
};

/// How texts make up lines: as cells of a table, empty ones and those of several lines each in their place;
/// or as lines of text, where an empty cell is nothing and one of several lines is taken apart.
enum class Reading { Cells, Lines };

/// The texts of a page as a reader meets them: lines from the top, in each the texts from the left. Barcodes
/// are left out, and lines in which nothing is written.
std::vector<std::vector<Word>> readingLines(const std::vector<Item>& items, Reading reading);

}  // namespace tavoline::report
