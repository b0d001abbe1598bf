#include "toolkit/controls/FittedText.h"

#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>
#include <algorithm>

namespace tavoline {

namespace {

/// As many words to a line as it holds. All that is left goes to the last of `most` lines.
QStringList brokenLines(const QStringList& words, const QFontMetrics& metrics, int width, int most) {
  QStringList lines;
  for (const QString& word : words) {
    const QString longer = lines.isEmpty() ? word : lines.back() + QLatin1Char(' ') + word;
    if (lines.isEmpty() || (lines.size() < most && metrics.horizontalAdvance(longer) > width))
      lines << word;
    else
      lines.back() = longer;
  }
  return lines;
}

bool fits(const QStringList& lines, const QFontMetrics& metrics, int width) {
  return std::all_of(lines.begin(), lines.end(),
                     [&](const QString& line) { return metrics.horizontalAdvance(line) <= width; });
}

}  // namespace

FittedText fitText(const QString& text, const QFont& font, QSize room, int smallest) {
  const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  FittedText fitted{{}, font, 0};
  int pixels = QFontInfo(font).pixelSize();
  for (;; --pixels) {
    fitted.font.setPixelSize(pixels);
    const QFontMetrics metrics(fitted.font);
    fitted.lineHeight = metrics.height();
    const int most = std::max(1, room.height() / fitted.lineHeight);
    fitted.lines = brokenLines(words, metrics, room.width(), most);
    if (fits(fitted.lines, metrics, room.width())) return fitted;
    if (pixels <= smallest) break;
  }
  const QFontMetrics metrics(fitted.font);
  for (QString& line : fitted.lines) line = metrics.elidedText(line, Qt::ElideRight, room.width());
  return fitted;
}

QFont fittedFont(const QString& text, const QFont& font, int width) {
  QFont fitted = font;
  for (int pixels = QFontInfo(font).pixelSize(); pixels > 1; --pixels) {
    if (QFontMetrics(fitted).horizontalAdvance(text) <= width) break;
    fitted.setPixelSize(pixels - 1);
  }
  return fitted;
}

}  // namespace tavoline
