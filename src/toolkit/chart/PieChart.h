#pragma once

#include "toolkit/chart/ChartPane.h"

class QPieSeries;

namespace tavoline {

/// One slice per row of a dataset, with its label and value. What is nought or less has no slice, and stands
/// in the legend alone.
class PieChart : public ChartPane {
  Q_OBJECT

 public:
  explicit PieChart(QWidget* parent = nullptr);

  /// Adds the one series: reads the dataset now. To be called on a cleared pane.
  void AddSeries(const QString& title, Dataset& rows, std::string_view valueField,
                 std::string_view labelField);

  QString chartKind() const override { return QStringLiteral("ctPie"); }
  QString chartLegend() const override;

 protected:
  void forgetSeries() override { slices_ = nullptr; }
  int pointAt(QPointF place) const override;

 private:
  QPieSeries* slices_ = nullptr;
};

}  // namespace tavoline
