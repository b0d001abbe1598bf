#pragma once

#include "toolkit/report/model/Template.h"

namespace tavoline::report {

/// Where bands come to stand on pages of a fixed height, one under the other, above the room that a page
/// footer needs on each page. Arithmetic only, in report units from the top left corner of the paper.
class PageLayout {
 public:
  PageLayout(const PageSetup& page, double footerHeight);

  struct Spot {
    bool newPage = false;  ///< The page before is full and to be finished first.
    double top = 0;
  };
  /// The place of the next band. One that fits no page at all stands at the head of one and is cut at its
  /// foot.
  Spot place(double height);

  double left() const { return left_; }
  double footerTop() const { return bottom_; }

 private:
  double left_, head_, bottom_;
  double next_;
};

}  // namespace tavoline::report
