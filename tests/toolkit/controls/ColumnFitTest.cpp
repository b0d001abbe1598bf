#include <gtest/gtest.h>

#include "toolkit/controls/ColumnFit.h"

namespace tavoline {
namespace {

TEST(ColumnFit, SharesTheRoom) {
  using Widths = std::vector<int>;
  const std::vector<ColumnWish> wishes = {{100, 80, 60, 60}, {200, 150, 70, 70}, {120, 120, 120, 90}};
  const struct {
    const char* what;
    int room;
    std::size_t rest;
    Widths expected;
  } cases[] = {
      {"just enough", 420, 1, {100, 200, 120}},
      {"the rest goes to its column", 500, 1, {100, 280, 120}},
      {"or to the last", 500, 2, {100, 200, 200}},
      {"titles are broken, the widest first", 390, 1, {100, 170, 120}},
      {"then all the titles", 350, 1, {80, 150, 120}},
      {"then texts are cut, an amount never", 300, 1, {80, 100, 120}},
      {"down to the least", 250, 1, {60, 70, 120}},
      {"then figures are drawn smaller", 240, 1, {60, 70, 110}},
      {"and no further", 10, 1, {60, 70, 90}},
  };
  for (const auto& c : cases) EXPECT_EQ(fitColumns(wishes, c.rest, c.room), c.expected) << c.what;
  EXPECT_TRUE(fitColumns({}, 0, 100).empty());

  Widths widths = {70, 150, 120};
  narrowBroken(widths, wishes, 2);
  EXPECT_EQ(widths, (Widths{60, 150, 130})) << "only what is broken gives way";
}

}  // namespace
}  // namespace tavoline
