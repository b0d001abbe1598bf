#pragma once

#include <vector>

#include "toolkit/controls/ColumnFit.h"
#include "toolkit/controls/GridModel.h"

namespace tavoline {

/// Makes the columns of a grid as wide as the rows that were in sight need. Rows that come into sight are
/// measured once, and widen a column only once no finger holds the grid.
class DBGrid::Fit {
 public:
  explicit Fit(DBGrid& grid) : grid_(grid) {}

  void forget();  ///< The rows or the columns are others.
  void now();  ///< Measures the rows that came into sight, and sets the widths where that or the room asks.

 private:
  /// Pixels of a column's texts.
  struct Texts {
    int whole = 0;
    int cut = 0;   // less for a long text, whole for a figure
    int bare = 0;  // with the smallest letters of a figure
  };
  bool measure();
  void measureRows(int from, int end);
  void setWidths();
  /// What the columns ask for in letters of so many pixels; where `cutsTitle`, the title of a last text is no
  /// reason to keep it wide.
  std::vector<ColumnWish> wishesIn(int letters, bool cutsTitle, std::size_t& rest) const;
  void write(int letters);  ///< In so many pixels from now on; the air at the sides of texts goes with it.
  void writeTitles();       ///< In the same letters.
  int usualLetters() const;

  DBGrid& grid_;
  std::vector<Texts> texts_;
  int from_ = 0, end_ = 0;  // the rows measured last
  bool working_ = false;
  int titleLetters_ = 0;  // pixels; 0 for the usual ones
  int room_ = -1;         // of the viewport when the widths were set
};

}  // namespace tavoline
