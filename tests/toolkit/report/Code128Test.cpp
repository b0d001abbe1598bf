#include "toolkit/report/model/Code128.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tavoline::report {
namespace {

// Widths of bars and gaps in modules, a digit each.
std::string widths(const std::vector<bool>& modules) {
  std::string result;
  for (std::size_t at = 0; at < modules.size();) {
    std::size_t end = at;
    while (end < modules.size() && modules[end] == modules[at]) ++end;
    result += static_cast<char>('0' + (end - at));
    at = end;
  }
  return result;
}

// From the symbol tables of the code: set C start, the pairs, the check character, and the stop.
TEST(Code128, symbolsAreThoseOfTheCode) {
  const std::string startC = "211232", startB = "211214", stop = "2331112";
  struct Case {
    const char* value;
    std::string bars;
  };
  const Case cases[] = {
      // 12 34: check (105 + 12 + 2*34) mod 103 = 82
      {"1234", startC + "112232" + "131123" + "121241" + stop},
      // A (33): check (104 + 33) mod 103 = 34
      {"A", startB + "111323" + "131123" + stop},
      // 7 (23): check (104 + 23) mod 103 = 24
      {"7", startB + "312131" + "311222" + stop},
  };
  for (const Case& c : cases) EXPECT_EQ(widths(code128(c.value)), c.bars) << c.value;
}

TEST(Code128, whatCannotBeCodedGivesNoBars) {
  EXPECT_TRUE(code128("").empty());
  EXPECT_TRUE(code128("متجر").empty());
  EXPECT_TRUE(code128(std::string(500, 'x')).empty());
  EXPECT_FALSE(code128("600000").empty());
}

}  // namespace
}  // namespace tavoline::report
