#pragma once

#include <QtWidgets/QFrame>
#include <memory>

#include "toolkit/chart/ChartRows.h"

class QChart;
class QChartView;
class QLabel;
class QScrollArea;

namespace tavoline {

class FingerScroll;

/// A pane that shows rows as a picture, drawn by Qt Charts. Where the points need more room than the pane
/// has, the chart is wider than it and a finger moves it. A touch on a point tells its label and value. Its
/// accessible name is its title; everything it shows can be read as text from its properties.
class ChartPane : public QFrame {
  Q_OBJECT
  Q_PROPERTY(QString chartKind READ chartKind)
  Q_PROPERTY(QString chartLabels READ chartLabels)
  Q_PROPERTY(QString chartValues READ chartValues)
  Q_PROPERTY(QString chartMaximum READ chartMaximum)
  Q_PROPERTY(QString chartLegend READ chartLegend)
  Q_PROPERTY(QString chartAxisX READ chartAxisX)
  Q_PROPERTY(QString chartAxisY READ chartAxisY)

 public:
  ~ChartPane() override;

  virtual QString chartKind() const = 0;               ///< "ctLineBar", "ctPie".
  QString chartLabels() const;                         ///< With ";" between, in the dataset's order.
  QString chartValues() const;                         ///< The same, in exact display text.
  virtual QString chartMaximum() const { return {}; }  ///< Of the vertical axis; empty without one.
  virtual QString chartLegend() const = 0;
  virtual QString chartAxisX() const { return {}; }  ///< Title of the horizontal axis.
  virtual QString chartAxisY() const { return {}; }

  const ChartRows& Rows() const { return rows_; }
  void Clear();                             ///< No series, and no rows.
  void HintWhenEmpty(const QString& hint);  ///< What the pane says in place of points.

 protected:
  explicit ChartPane(QWidget* parent);

  QChart& chart() const { return *chart_; }
  QChartView& view() const { return *view_; }
  void setRows(ChartRows rows) { rows_ = std::move(rows); }
  /// Titles the pane, 14 points bold, for eyes and for screen readers, above what moves.
  void setTitle(const QString& title);
  /// Names the one series of the pane above what moves, in place of the chart's own legend.
  void setLegend(const QString& text, const QColor& colour);
  void setFoot(const QString& text);  ///< The title of the horizontal axis, below what moves.
  QFont smallFont() const;            ///< 10 points, for all but the title.
  /// The width that the points need, in pixels; the pane scrolls where it has less.
  void setNeededWidth(int pixels);
  virtual void forgetSeries() {}
  /// The point at a place of the view; -1 for none.
  virtual int pointAt(QPointF place) const = 0;

  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void stretch();
  void tell(QPoint place) const;

  QLabel *title_, *legend_, *foot_, *hint_;
  QScrollArea* area_;
  QChart* chart_;
  QChartView* view_;
  std::unique_ptr<FingerScroll> fingers_;
  ChartRows rows_;
  int neededWidth_ = 0;
};

}  // namespace tavoline
