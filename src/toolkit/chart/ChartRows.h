#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"
#include "toolkit/forms/ProgressBox.h"

namespace tavoline {

class Dataset;

/// What a chart shows: one point per visible row of a dataset, in its order.
struct ChartRows {
  std::vector<std::string> labels;  ///< In display text.
  std::vector<Value> values;        ///< Null where the row has none.

  std::size_t size() const { return labels.size(); }
  /// Of a point, for drawing; 0 for null. Throws ConversionError for what is no number.
  double amount(std::size_t point) const;
  double total() const;
  std::string joinedLabels() const;  ///< With ";" between.
  std::string joinedValues() const;  ///< Display text, exact, with ";" between.
};

/// Reads the visible rows; moves nothing. No rows once `progress` gives up. Throws DatasetError for a field
/// that is not there.
ChartRows readChartRows(Dataset& rows, std::string_view valueField, std::string_view labelField,
                        const Progress& progress = {});

}  // namespace tavoline
