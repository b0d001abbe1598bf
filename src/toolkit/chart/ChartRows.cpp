#include "toolkit/chart/ChartRows.h"

#include "data/dataset/Dataset.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

std::size_t columnOf(const Dataset& rows, std::string_view field) {
  const int column = rows.ColumnIndex(field);
  if (column < 0)
    throw DatasetError("« " + rows.Name() + " » n'a pas de champ « " + std::string(field) + " ».");
  return static_cast<std::size_t>(column);
}

void appendJoined(std::string& text, std::size_t place, const std::string& part) {
  if (place > 0) text += ';';
  text += part;
}

}  // namespace

double ChartRows::amount(std::size_t point) const {
  return values[point].isNull() ? 0 : values[point].toFloat();
}

double ChartRows::total() const {
  double sum = 0;
  for (std::size_t point = 0; point < size(); ++point) sum += amount(point);
  return sum;
}

std::string ChartRows::joinedLabels() const {
  std::string text;
  for (std::size_t point = 0; point < size(); ++point) appendJoined(text, point, labels[point]);
  return text;
}

std::string ChartRows::joinedValues() const {
  std::string text;
  for (std::size_t point = 0; point < size(); ++point) appendJoined(text, point, values[point].text());
  return text;
}

ChartRows readChartRows(Dataset& rows, std::string_view valueField, std::string_view labelField,
                        const Progress& progress) {
  constexpr std::size_t batch = 64;  // rows, between two looks at the clock
  const std::size_t value = columnOf(rows, valueField), label = columnOf(rows, labelField);
  ChartRows result;
  for (std::size_t done = batch; !rows.CountOn(batch); done += batch)
    if (progress && !progress(done, 0)) return result;
  const std::size_t count = rows.RecordCount();
  result.labels.reserve(count);
  result.values.reserve(count);
  for (std::size_t record = 0; record < count; ++record) {
    result.labels.push_back(rows.ValueAt(record, label).text());
    result.values.push_back(rows.ValueAt(record, value));
  }
  return result;
}

}  // namespace tavoline
