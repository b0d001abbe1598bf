#include "toolkit/controls/GridColumn.h"

#include <QtCore/QStringList>
#include <algorithm>

#include "data/value/Regional.h"

namespace tavoline {

GridColumn GridColumn::parse(const QString& line) {
  GridColumn column;
  const QString options = line.section(QLatin1Char('|'), 1);
  const QString head = line.section(QLatin1Char('|'), 0, 0);
  column.field = head.section(QLatin1Char('='), 0, 0).trimmed().toStdString();
  column.title = head.section(QLatin1Char('='), 1).trimmed();
  for (const QString& option : options.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    if (option.trimmed() == QLatin1String("right"))
      column.rightAligned = true;
    else if (option.trimmed() == QLatin1String("rw"))
      column.writable = true;
    else if (option.trimmed() == QLatin1String("wide"))
      column.wide = true;
    else if (option.trimmed() == QLatin1String("money"))
      column.money = true;
    else
      column.width = option.trimmed().toInt();
  }
  return column;
}

std::string GridColumn::shown(const Value& value) const {
  return money && value.isNumber() ? formatPattern(moneyFormat, value.toFloat()) : value.text();
}

int GridColumn::narrowestTitle(const QFontMetrics& metrics) const {
  int narrowest = metrics.horizontalAdvance(title);
  for (qsizetype gap = title.indexOf(QLatin1Char(' ')); gap >= 0;
       gap = title.indexOf(QLatin1Char(' '), gap + 1)) {
    const int first = metrics.horizontalAdvance(title.left(gap));
    narrowest = std::min(narrowest, std::max(first, metrics.horizontalAdvance(title.mid(gap + 1))));
  }
  return narrowest;
}

int longestWord(const QString& text, const QFontMetrics& metrics) {
  int longest = 0;
  for (const QString& word : text.split(QLatin1Char(' ')))
    longest = std::max(longest, metrics.horizontalAdvance(word));
  return longest;
}

}  // namespace tavoline
