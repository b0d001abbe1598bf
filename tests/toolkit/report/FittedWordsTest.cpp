#include "toolkit/report/output/FittedWords.h"

#include <gtest/gtest.h>

namespace tavoline::report {
namespace {

TEST(FittedWords, namesGoBelowAndGetSmallerFiguresStayWhole) {
  Object cell;
  cell.fontName = "Arial";
  cell.fontSize = 9.5;
  constexpr double kHeight = 18.9;  // of a ticket's row: two lines of six points
  const struct {
    const char* text;
    double width;
    qsizetype lines;
    bool smaller, cut;
  } cases[] = {
      {"Café", 140, 1, false, false},
      {"Café crème double à la vanille", 90, 2, true, false},
      {"Café crème double à la vanille de Madagascar et sa chantilly maison", 60, 2, true, true},
      {"deux\nlignes", 140, 2, true, false},
      {"quatre\nlignes\nde\ncommentaire", 140, 2, true, true},
      {"1234567,75", 30, 1, true, false},
      {"1234567,75 DA", 12, 1, true, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.text);
    const FittedWords fit = fitWords(QString::fromUtf8(each.text), cell, each.width, kHeight);
    EXPECT_EQ(fit.lines.size(), each.lines);
    EXPECT_EQ(fit.size < 1, each.smaller);
    EXPECT_EQ(fit.cut, each.cut);
    EXPECT_EQ(fit.lines.join(u' ').contains(u'…'), each.cut);
    const bool figure = each.text[0] == '1';
    EXPECT_TRUE(figure || fit.size * cell.fontSize >= 6) << fit.size;
  }
}

}  // namespace
}  // namespace tavoline::report
