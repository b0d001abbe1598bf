#pragma once

#include <QtCore/QString>
#include <QtGui/QFontMetrics>
#include <string>

#include "data/value/Value.h"

namespace tavoline {

/// A column of a grid, as its line of the form says (see DBGrid) and as its dataset is open now.
struct GridColumn {
  /// Of one line "field=Title|options".
  static GridColumn parse(const QString& line);
  /// Pixels between a cell's borders that the title wants at least, broken once at most.
  int narrowestTitle(const QFontMetrics& metrics) const;
  /// How a cell shows a value. Reading and editing go by its exact text.
  std::string shown(const Value& value) const;

  bool isNumber() const { return money || type == FieldType::Integer || type == FieldType::Float; }
  bool isFigure() const { return isNumber() || type == FieldType::DateTime; }  ///< Never cut.

  std::string field;
  QString title;
  bool rightAligned = false, writable = false;
  bool wide = false;   // takes what width is left
  bool money = false;  // an amount, with two decimals
  int width = 0;       // pixels that it has at least where there is room
  int index = -1;      // in the dataset; -1 if it has no such field
  FieldType type = FieldType::Text;
};

/// The width of the longest word of a text, in pixels.
int longestWord(const QString& text, const QFontMetrics& metrics);

}  // namespace tavoline
