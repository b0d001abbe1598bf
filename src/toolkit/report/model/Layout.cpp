#include "toolkit/report/model/Layout.h"

namespace tavoline::report {

namespace {
// Heights are sums of decimal fractions; a band that fits but for their last digits fits.
constexpr double kTolerance = 0.01;
}  // namespace

PageLayout::PageLayout(const PageSetup& page, double footerHeight)
    : left_(page.marginLeft * kUnitsPerMm),
      head_(page.marginTop * kUnitsPerMm),
      bottom_(page.unitHeight() - page.marginBottom * kUnitsPerMm - footerHeight),
      next_(head_) {}

PageLayout::Spot PageLayout::place(double height) {
  Spot spot;
  spot.newPage = next_ + height > bottom_ + kTolerance && next_ > head_;
  if (spot.newPage) next_ = head_;
  spot.top = next_;
  next_ += height;
  return spot;
}

}  // namespace tavoline::report
