#include "toolkit/chart/LineBarChart.h"

#include <QtCharts/QBarCategoryAxis>
#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>
#include <QtWidgets/QGraphicsSimpleTextItem>
#include <algorithm>
#include <cmath>

#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int kAxisRoom = 150;    // pixels beside the points: the vertical axis and the margins
constexpr int kNarrowPoint = 18;  // pixels for a point with a label of one or two letters
constexpr int kWidePoint = 26;
constexpr qreal kGap = 3;  // pixels between a bar and its value

QColor barColour(bool hatched) {
  return QColor(hatched ? 0xffb5793a : theme::accent);
}

// A category axis takes each text once: one that comes again is told apart by blanks of no width.
QStringList apart(const std::vector<std::string>& labels) {
  QStringList categories;
  QHash<QString, int> seen;
  for (const std::string& label : labels) {
    const QString text = QString::fromStdString(label);
    categories << text + QString(++seen[text], QChar(0x200B));
  }
  return categories;
}

}  // namespace

LineBarChart::LineBarChart(QWidget* parent) : ChartPane(parent) {
  connect(&chart(), &QChart::plotAreaChanged, this, &LineBarChart::placeValues);
}

void LineBarChart::AddSeries(const LineBarSettings& settings, Dataset& rows, std::string_view valueField,
                             std::string_view labelField) {
  settings_ = settings;
  setRows(readChartRows(rows, valueField, labelField));
  setTitle(settings.title);
  chart().setMargins(QMargins(6, 6, settings.rightMargin, 6));

  auto* set = new QBarSet(settings.legend);
  set->setBrush(settings.hatched ? QBrush(barColour(true), Qt::BDiagPattern) : QBrush(barColour(false)));
  set->setPen(QPen(barColour(settings.hatched), 1));
  auto* line = new QLineSeries;
  for (std::size_t point = 0; point < Rows().size(); ++point) {
    *set << Rows().amount(point);
    line->append(static_cast<qreal>(point), Rows().amount(point));
  }
  bars_ = new QBarSeries;
  bars_->setBarWidth(settings.barWidth / 100.0);
  bars_->append(set);
  line->setPen(QPen(QColor(theme::ink), 2));
  line->setPointsVisible(true);
  chart().addSeries(bars_);
  chart().addSeries(line);
  for (QLegendMarker* marker : chart().legend()->markers(line)) marker->setVisible(false);
  addAxes();
  writeValues();

  const bool narrow = std::all_of(Rows().labels.begin(), Rows().labels.end(),
                                  [](const std::string& label) { return label.size() <= 2; });
  setNeededWidth(kAxisRoom + static_cast<int>(Rows().size()) * (narrow ? kNarrowPoint : kWidePoint));
  placeValues();
}

void LineBarChart::addAxes() {
  auto* across = new QBarCategoryAxis;
  across->append(apart(Rows().labels));
  across->setTitleText(settings_.axisX);
  across->setLabelsAngle(-settings_.labelAngle);
  across->setGridLineVisible(false);
  auto* up = new QValueAxis;
  up->setRange(0, settings_.maximum);
  up->setLabelFormat(QStringLiteral("%.0f"));
  up->setTitleText(settings_.axisY);
  up->setGridLineColor(QColor(theme::line));
  for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(across), static_cast<QAbstractAxis*>(up)}) {
    axis->setLabelsColor(QColor(theme::ink));
    axis->setTitleBrush(QColor(theme::muted));
    axis->setLinePenColor(QColor(theme::line));
  }
  chart().addAxis(across, Qt::AlignBottom);
  chart().addAxis(up, Qt::AlignLeft);
  for (QAbstractSeries* series : chart().series()) {
    series->attachAxis(across);
    series->attachAxis(up);
  }
}

// The library writes values on bars only within the axis, and all alike.
void LineBarChart::writeValues() {
  QFont font = this->font();
  font.setPointSize(settings_.valueSize);
  for (const Value& value : Rows().values) {
    auto* text = new QGraphicsSimpleTextItem(QString::fromStdString(value.text()), &chart());
    text->setFont(font);
    text->setZValue(20);
    values_.push_back(text);
  }
}

void LineBarChart::placeValues() {
  if (!bars_ || values_.empty()) return;
  const QRectF plot = chart().plotArea();
  const qreal pitch = plot.width() / static_cast<qreal>(values_.size());
  const bool upright = std::any_of(values_.begin(), values_.end(), [&](QGraphicsSimpleTextItem* text) {
    return text->boundingRect().width() > pitch;
  });
  for (std::size_t point = 0; point < values_.size(); ++point) {
    QGraphicsSimpleTextItem& text = *values_[point];
    const QSizeF size = text.boundingRect().size();
    const qreal length = upright ? size.width() : size.height();
    const qreal amount = std::clamp(Rows().amount(point), 0.0, settings_.maximum);
    const QPointF top = chart().mapToPosition(QPointF(static_cast<qreal>(point), amount), bars_);
    const bool inside = top.y() - kGap - length < plot.top();
    const qreal end = inside ? top.y() + kGap + length : top.y() - kGap;  // the lower end of the text
    text.setBrush(QColor(inside && !settings_.hatched ? theme::card : theme::ink));
    text.setRotation(upright ? -90 : 0);
    text.setPos(upright ? QPointF(top.x() - size.height() / 2, end)
                        : QPointF(top.x() - size.width() / 2, end - size.height()));
  }
}

QString LineBarChart::chartMaximum() const {
  return QString::fromStdString(Value(settings_.maximum).text());
}

void LineBarChart::forgetSeries() {
  qDeleteAll(values_);
  values_.clear();
  bars_ = nullptr;
}

int LineBarChart::pointAt(QPointF place) const {
  if (!bars_) return -1;
  const QPointF inChart = chart().mapFromScene(view().mapToScene(place.toPoint()));
  return static_cast<int>(std::lround(chart().mapToValue(inChart, bars_).x()));
}

}  // namespace tavoline
