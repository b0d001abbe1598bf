#include "toolkit/report/model/Layout.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavoline::report {
namespace {

TEST(PageLayout, bandsStandUnderEachOtherAboveTheFooter) {
  struct Case {
    const char* name;
    double pageUnits, margin, footer;
    std::vector<double> heights;
    std::vector<double> tops;
    std::vector<bool> newPages;
  };
  const Case cases[] = {
      {"fills to the last unit", 100, 0, 0, {60, 40, 1}, {0, 60, 0}, {false, false, true}},
      {"the footer's room is kept on each page", 100, 0, 20, {50, 31, 49}, {0, 0, 31}, {false, true, false}},
      {"margins at head and foot", 100, 10, 0, {50, 30, 1}, {10, 60, 10}, {false, false, true}},
      {"a band of no height breaks no page",
       100,
       0,
       0,
       {100, 0, 0, 1},
       {0, 100, 100, 0},
       {false, false, false, true}},
      {"a band too high for any page takes one of its own", 100, 0, 0, {150, 10}, {0, 0}, {false, true}},
      {"too high, and not first", 100, 0, 0, {10, 150, 10}, {0, 0, 0}, {false, true, true}},
      {"decimals that miss by their last digits fit",
       56.69295,
       0,
       0,
       {18.89765, 18.89765, 18.897651},
       {0, 18.89765, 37.7953},
       {false, false, false}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    PageSetup setup;
    setup.height = c.pageUnits / kUnitsPerMm;
    setup.marginTop = setup.marginBottom = c.margin / kUnitsPerMm;
    PageLayout layout(setup, c.footer);
    for (std::size_t i = 0; i < c.heights.size(); ++i) {
      const PageLayout::Spot spot = layout.place(c.heights[i]);
      EXPECT_NEAR(spot.top, c.tops[i], 1e-9) << "band " << i;
      EXPECT_EQ(spot.newPage, c.newPages[i]) << "band " << i;
    }
    EXPECT_NEAR(layout.footerTop(), c.pageUnits - c.margin - c.footer, 1e-9);
  }
}

}  // namespace
}  // namespace tavoline::report
