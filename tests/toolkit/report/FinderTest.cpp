#include "toolkit/report/model/Finder.h"

#include "toolkit/report/Samples.h"

namespace tavoline::report {
namespace {

TEST(Finder, goesFromHitToHitAcrossPagesAndRound) {
  const Document document = sampleDocument(30);
  const Finder finder(document, "LIGNE 2");
  std::vector<std::string> found;
  std::vector<std::size_t> pages;
  Hit hit;
  ASSERT_TRUE(finder.first(0, hit));
  for (int i = 0; i < 12; ++i) {
    found.emplace_back(document.page(hit.page).text(hit.word));
    pages.push_back(hit.page);
    ASSERT_TRUE(finder.next(hit));
  }
  EXPECT_EQ(found, (std::vector<std::string>{"ligne 2", "ligne 20", "ligne 21", "ligne 22", "ligne 23",
                                             "ligne 24", "ligne 25", "ligne 26", "ligne 27", "ligne 28",
                                             "ligne 29", "ligne 2"}));
  EXPECT_EQ(pages.front(), 0U);
  EXPECT_EQ(pages[10], 1U);
  ASSERT_TRUE(finder.first(0, hit));
  ASSERT_TRUE(finder.previous(hit));
  EXPECT_EQ(document.page(hit.page).text(hit.word), "ligne 29");
  ASSERT_TRUE(finder.previous(hit));
  EXPECT_EQ(document.page(hit.page).text(hit.word), "ligne 28");
}

}  // namespace
}  // namespace tavoline::report
