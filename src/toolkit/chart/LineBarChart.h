#pragma once

#include "toolkit/chart/ChartPane.h"

class QBarSeries;
class QGraphicsSimpleTextItem;

namespace tavoline {

/// How a pane of bars looks. Texts are as they are shown; the maximum is in the unit of the values.
struct LineBarSettings {
  QString title, legend, axisX, axisY;
  double maximum = 150000;  ///< Of the vertical axis, whatever the values are: a larger one runs out of it.
  int valueSize = 10;       ///< Of the values on the points, in points.
  int barWidth = 80;        ///< Percent of what a point has.
  int labelAngle = 45;      ///< Degrees, of the labels below.
  int rightMargin = 50;     ///< Pixels.
  bool light = false;       ///< A second look, told apart without colour.
};

/// Bars with a line through them, one point per row of a dataset under its filter, in the dataset's order.
/// The value stands on each point, upright where there is no room; one that leaves the axis has its value
/// inside the bar.
class LineBarChart : public ChartPane {
  Q_OBJECT

 public:
  explicit LineBarChart(QWidget* parent = nullptr);

  /// Adds the one series: reads the dataset now. To be called on a cleared pane. Empty if `progress` gives
  /// up.
  void AddSeries(const LineBarSettings& settings, Dataset& rows, std::string_view valueField,
                 std::string_view labelField, const Progress& progress = {});

  QString chartKind() const override { return QStringLiteral("ctLineBar"); }
  QString chartMaximum() const override;
  QString chartLegend() const override { return settings_.legend; }
  QString chartAxisX() const override { return settings_.axisX; }
  QString chartAxisY() const override { return settings_.axisY; }

 protected:
  void forgetSeries() override;
  int pointAt(QPointF place) const override;

 private:
  void addAxes();
  void writeTexts();
  void placeTexts();
  void placeValue(std::size_t point, bool upright);
  void placeLabel(std::size_t point);

  LineBarSettings settings_;
  QBarSeries* bars_ = nullptr;
  std::vector<QGraphicsSimpleTextItem*> values_, labels_;  // on each point, and below it
};

}  // namespace tavoline
