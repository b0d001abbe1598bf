#include "toolkit/chart/PieChart.h"

#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLegend>
#include <QtCharts/QPieSeries>
#include <QtCharts/QPieSlice>
#include <array>
#include <cmath>
#include <numbers>

#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr double kRadius = 0.65;  // of half the plot's shorter side: labels stand around the pie
constexpr double kThin = 30;      // degrees: labels of thinner neighbours would touch
constexpr double kArm = 0.15,
                 kLongerArm = 0.22;  // of the radius, from a slice to its label, and more for a next thin one

struct Look {
  QRgb colour;
  Qt::BrushStyle pattern;
};

// Neighbours differ in pattern or lightness, not in hue alone.
Look lookOf(std::size_t slice) {
  const std::array looks = {
      Look{theme().accent, Qt::SolidPattern}, Look{0xffb5793a, Qt::BDiagPattern},
      Look{0xff8fbcb9, Qt::SolidPattern},     Look{theme().accentDark, Qt::DiagCrossPattern},
      Look{0xffe0b77f, Qt::SolidPattern},     Look{theme().muted, Qt::FDiagPattern},
      Look{0xff7a6bb0, Qt::SolidPattern},     Look{0xff8a5a2b, Qt::Dense5Pattern},
  };
  return looks[slice % looks.size()];
}

}  // namespace

PieChart::PieChart(QWidget* parent) : ChartPane(parent) {
  chart().legend()->setAlignment(Qt::AlignBottom);
}

void PieChart::AddSeries(const QString& title, Dataset& rows, std::string_view valueField,
                         std::string_view labelField) {
  setRows(readChartRows(rows, valueField, labelField));
  setTitle(title);
  slices_ = new QPieSeries;
  slices_->setPieSize(kRadius);
  for (std::size_t row = 0; row < Rows().size(); ++row) {
    const QString text =
        QString::fromStdString(Rows().labels[row] + " : " + Rows().values[row].text() + " DA");
    const double amount = std::max(0.0, Rows().amount(row));
    auto* slice = new QPieSlice(text, amount);
    const Look look = lookOf(row);
    slice->setBrush(QBrush(QColor(look.colour), look.pattern));
    slice->setPen(QPen(QColor(theme().card), 2));
    slice->setLabelColor(QColor(theme().ink));
    slice->setLabelFont(smallFont());
    slice->setLabelVisible(amount > 0);
    slices_->append(slice);
  }
  chart().addSeries(slices_);
  int thin = 0;
  for (QPieSlice* slice : slices_->slices()) {
    if (!slice->isLabelVisible()) continue;
    thin = slice->angleSpan() < kThin ? thin + 1 : 0;
    slice->setLabelArmLengthFactor(kArm + kLongerArm * std::max(0, thin - 1));
  }
}

QString PieChart::chartLegend() const {
  return chartLabels();
}

// Angles go clockwise from the top, as the slices do.
int PieChart::pointAt(QPointF place) const {
  if (!slices_) return -1;
  const QRectF plot = chart().plotArea();
  const QPointF from = chart().mapFromScene(view().mapToScene(place.toPoint())) - plot.center();
  if (std::hypot(from.x(), from.y()) > kRadius * std::min(plot.width(), plot.height()) / 2) return -1;
  double angle = std::atan2(from.x(), -from.y()) * 180 / std::numbers::pi;
  if (angle < 0) angle += 360;
  const QList<QPieSlice*> all = slices_->slices();
  for (int at = 0; at < all.size(); ++at)
    if (angle >= all[at]->startAngle() && angle < all[at]->startAngle() + all[at]->angleSpan()) return at;
  return -1;
}

}  // namespace tavoline
