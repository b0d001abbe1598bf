#include <gtest/gtest.h>

#include <QtGui/QFontMetrics>

#include "toolkit/controls/FittedText.h"

namespace tavoline {
namespace {

TEST(FittedTextTest, WordsGoBelowThenLettersShrinkThenTheTextIsCut) {
  QFont font;
  font.setPixelSize(16);
  const QFontMetrics metrics(font);
  const int line = metrics.height();
  const auto wide = [&](const char* text) { return metrics.horizontalAdvance(QString::fromUtf8(text)); };
  const struct {
    const char* text;
    QSize room;
    const char* lines;
    bool shrunk;
  } cases[] = {
      {"Café crème", {wide("Café crème"), line}, "Café crème", false},
      {"Café crème", {wide("Café crème") - 1, 2 * line}, "Café/crème", false},
      {"Pain au chocolat", {wide("chocolat"), 3 * line}, "Pain au/chocolat", false},
      {"Cappuccino", {wide("Cappuccino") * 7 / 8, line}, "Cappuccino", true},
      {"Un deux trois", {wide("trois"), 2 * line + line / 2}, "Un/deux/trois", true},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.text);
    const FittedText fitted = fitText(QString::fromUtf8(each.text), font, each.room, 12);
    EXPECT_EQ(fitted.lines.join(QLatin1Char('/')).toStdString(), each.lines);
    EXPECT_EQ(fitted.font.pixelSize() < 16, each.shrunk);
    EXPECT_GE(fitted.font.pixelSize(), 12);
    EXPECT_LE(int(fitted.lines.size()) * fitted.lineHeight, each.room.height());
  }
  const FittedText cut = fitText(QStringLiteral("Cappuccino"), font, {wide("Capp"), line}, 12);
  EXPECT_EQ(cut.font.pixelSize(), 12);
  EXPECT_TRUE(cut.lines.at(0).startsWith(QStringLiteral("Ca")) &&
              cut.lines.at(0).endsWith(QStringLiteral("…")));
}

}  // namespace
}  // namespace tavoline
