#include "toolkit/report/output/FittedWords.h"

#include <QtGui/QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "data/value/Figures.h"

namespace tavoline::report {

namespace {

constexpr double kNarrowest = 0.9;       // a line a little too long is set narrower, down to this
constexpr double kSmallestPoints = 6;    // that a thermal printer still prints
constexpr double kSmallestFigure = 0.1;  // of its usual size
constexpr double kStep = 0.05;           // from one size that is tried to the next
// Lines are measured in a size large enough for rounding not to matter.
constexpr double kMeasureScale = 10;
constexpr int kDefaultDpi = 96;

QString family(const std::string& name) {
  if (name == "Arial" || name == "Tahoma" || name == "Arial Black") return "Liberation Sans";
  return QString::fromStdString(name);
}

QStringList broken(const QString& text, const QFontMetricsF& metrics, double width) {
  QStringList lines;
  for (const QString& paragraph : text.split(u'\n')) {
    lines << QString();
    for (const QString& word : paragraph.split(u' ')) {
      const QString longer = lines.back().isEmpty() ? word : lines.back() + u' ' + word;
      if (lines.back().isEmpty() || metrics.horizontalAdvance(longer) <= width) {
        lines.back() = longer;
      } else {
        lines << word;
      }
    }
  }
  return lines;
}

}  // namespace

QFont deviceFont(const Object& object, double scale, int deviceDpi) {
  QFont font(family(object.fontName));
  font.setStyleHint(QFont::SansSerif);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setPointSizeF(object.fontSize * kUnitsPerPoint * scale * 72.0 / deviceDpi);
  font.setBold((object.fontStyle & FontBold) || object.fontName == "Arial Black");
  if (object.fontName == "Arial Black") font.setWeight(QFont::Black);
  font.setItalic(object.fontStyle & FontItalic);
  font.setUnderline(object.fontStyle & FontUnderline);
  return font;
}

FittedWords fitWords(const QString& text, const Object& object, double width, double height) {
  QFont large = deviceFont(object, kMeasureScale, kDefaultDpi);
  large.setPixelSize(static_cast<int>(std::lround(object.fontSize * kUnitsPerPoint * kMeasureScale)));
  const QFontMetricsF metrics(large);
  const double room = width * kMeasureScale / kNarrowest;
  const bool figure = isFigure(text.toStdString());
  const double least = figure ? kSmallestFigure : std::min(1.0, kSmallestPoints / object.fontSize);
  for (double size = 1;; size = std::max(least, size - kStep)) {
    const auto most = std::max<qsizetype>(
        1, static_cast<qsizetype>(height * kMeasureScale / (metrics.height() * size) + kStep));
    FittedWords fit{figure ? QStringList(text) : broken(text, metrics, room / size), size};
    const auto fits = [&](const QString& line) { return metrics.horizontalAdvance(line) * size <= room; };
    if (fit.lines.size() <= most && std::all_of(fit.lines.begin(), fit.lines.end(), fits)) return fit;
    if (size > least) continue;
    fit.cut = true;
    if (fit.lines.size() > most) {
      fit.lines = fit.lines.first(most);
      fit.lines.back() += u'…';
    }
    for (QString& line : fit.lines) line = metrics.elidedText(line, Qt::ElideRight, room / size);
    return fit;
  }
}

}  // namespace tavoline::report
