#include "toolkit/chart/LineBarChart.h"

#include <QtCharts/QBarCategoryAxis>
#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLegend>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>
#include <QtCore/QtMath>
#include <QtWidgets/QGraphicsSimpleTextItem>
#include <algorithm>
#include <cmath>

#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int kAxisRoom = 150;    // pixels beside the points: the vertical axis and the margins
constexpr int kNarrowPoint = 18;  // pixels for a point with a label of one or two letters
constexpr int kWidePoint = 26;
constexpr int kLabelLength = 14;  // letters of a label below; a touch tells the whole
constexpr qreal kGap = 3;         // pixels between a bar and its value

QColor barColour(bool light) {
  return QColor(light ? 0xffe6c28f : theme().accent);
}

// As on paper: amounts are counted in hundredths, however a sum of floats ends.
QString drawn(const Value& value) {
  if (value.isNull()) return {};
  return QString::fromStdString(Value(std::round(value.toFloat() * 100) / 100).text());
}

QString shortened(const std::string& label) {
  const QString text = QString::fromStdString(label);
  return text.size() > kLabelLength ? text.left(kLabelLength - 1).trimmed() + QChar(0x2026) : text;
}

}  // namespace

LineBarChart::LineBarChart(QWidget* parent) : ChartPane(parent) {
  chart().legend()->hide();
  connect(&chart(), &QChart::plotAreaChanged, this, &LineBarChart::placeTexts);
}

void LineBarChart::AddSeries(const LineBarSettings& settings, Dataset& rows, std::string_view valueField,
                             std::string_view labelField, const Progress& progress) {
  settings_ = settings;
  setRows(readChartRows(rows, valueField, labelField, progress));
  setTitle(settings.title);
  setLegend(settings.legend, barColour(settings.light));
  setFoot(settings.axisX);

  auto* set = new QBarSet(settings.legend);
  set->setColor(barColour(settings.light));
  set->setPen(Qt::NoPen);
  auto* line = new QLineSeries;
  for (std::size_t point = 0; point < Rows().size(); ++point) {
    *set << Rows().amount(point);
    line->append(static_cast<qreal>(point), Rows().amount(point));
  }
  bars_ = new QBarSeries;
  bars_->setBarWidth(settings.barWidth / 100.0);
  bars_->append(set);
  line->setPen(QPen(QColor(theme().ink), 2));
  line->setPointsVisible(true);
  chart().addSeries(bars_);
  chart().addSeries(line);
  addAxes();
  writeTexts();

  const bool narrow = std::all_of(Rows().labels.begin(), Rows().labels.end(),
                                  [](const std::string& label) { return label.size() <= 2; });
  setNeededWidth(kAxisRoom + static_cast<int>(Rows().size()) * (narrow ? kNarrowPoint : kWidePoint));
  placeTexts();
}

void LineBarChart::addAxes() {
  auto* across = new QBarCategoryAxis;
  QStringList categories;  // each text once: the labels that are seen are written beside
  for (std::size_t point = 0; point < Rows().size(); ++point) categories << QString::number(point);
  across->append(categories);
  across->setLabelsVisible(false);
  across->setGridLineVisible(false);
  auto* up = new QValueAxis;
  up->setRange(0, settings_.maximum);
  up->setLabelFormat(QStringLiteral("%.0f"));
  up->setTickCount(4);  // of five, the library cuts the amounts in a pane of a hundred pixels
  up->setTitleText(settings_.axisY);
  up->setGridLineColor(QColor(theme().line));
  for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(across), static_cast<QAbstractAxis*>(up)}) {
    axis->setLabelsColor(QColor(theme().ink));
    axis->setLabelsFont(smallFont());
    axis->setTitleFont(smallFont());
    axis->setTitleBrush(QColor(theme().muted));
    axis->setLinePenColor(QColor(theme().line));
  }
  chart().addAxis(across, Qt::AlignBottom);
  chart().addAxis(up, Qt::AlignLeft);
  for (QAbstractSeries* series : chart().series()) {
    series->attachAxis(across);
    series->attachAxis(up);
  }
}

// The library writes values on bars only within the axis and all alike, and drops labels that lean out of it.
void LineBarChart::writeTexts() {
  QFont font = smallFont();
  font.setPointSize(settings_.valueSize);
  const auto text = [&](const QString& words) {
    auto* item = new QGraphicsSimpleTextItem(words, &chart());
    item->setFont(font);
    item->setBrush(QColor(theme().ink));
    item->setZValue(20);
    return item;
  };
  qreal below = 0;
  for (std::size_t point = 0; point < Rows().size(); ++point) {
    values_.push_back(text(drawn(Rows().values[point])));
    labels_.push_back(text(shortened(Rows().labels[point])));
    const QSizeF size = labels_.back()->boundingRect().size();
    below = std::max(
        below, (size.width() + size.height()) * std::sin(qDegreesToRadians(qreal(settings_.labelAngle))));
  }
  chart().setMargins(QMargins(4, 4, settings_.rightMargin, 4 + static_cast<int>(below)));
}

void LineBarChart::placeTexts() {
  if (!bars_ || values_.empty()) return;
  const qreal pitch = chart().plotArea().width() / static_cast<qreal>(values_.size());
  const bool upright = std::any_of(values_.begin(), values_.end(), [&](QGraphicsSimpleTextItem* text) {
    return text->boundingRect().width() > pitch;
  });
  for (std::size_t point = 0; point < values_.size(); ++point) {
    placeValue(point, upright);
    placeLabel(point);
  }
}

void LineBarChart::placeValue(std::size_t point, bool upright) {
  QGraphicsSimpleTextItem& text = *values_[point];
  const QSizeF size = text.boundingRect().size();
  const qreal length = upright ? size.width() : size.height();
  const qreal amount = std::clamp(Rows().amount(point), 0.0, settings_.maximum);
  const QPointF top = chart().mapToPosition(QPointF(static_cast<qreal>(point), amount), bars_);
  const bool inside = top.y() - kGap - length < chart().plotArea().top();
  const qreal end = inside ? top.y() + kGap + length : top.y() - kGap;  // the lower end of the text
  text.setBrush(inside ? lettersOn(barColour(settings_.light)) : QColor(theme().ink));
  text.setRotation(upright ? -90 : 0);
  text.setPos(upright ? QPointF(top.x() - size.height() / 2, end)
                      : QPointF(top.x() - size.width() / 2, end - size.height()));
}

// Leaning, with its end beneath the bar.
void LineBarChart::placeLabel(std::size_t point) {
  QGraphicsSimpleTextItem& text = *labels_[point];
  const qreal angle = qDegreesToRadians(qreal(settings_.labelAngle));
  const QSizeF size = text.boundingRect().size();
  const QPointF foot = chart().mapToPosition(QPointF(static_cast<qreal>(point), 0), bars_);
  text.setRotation(-settings_.labelAngle);
  text.setPos(foot + QPointF(-size.width() * std::cos(angle) - size.height() * std::sin(angle) / 2,
                             kGap + size.width() * std::sin(angle)));
}

QString LineBarChart::chartMaximum() const {
  return QString::fromStdString(Value(settings_.maximum).text());
}

void LineBarChart::forgetSeries() {
  qDeleteAll(values_);
  qDeleteAll(labels_);
  values_.clear();
  labels_.clear();
  bars_ = nullptr;
}

int LineBarChart::pointAt(QPointF place) const {
  if (!bars_) return -1;
  const QPointF inChart = chart().mapFromScene(view().mapToScene(place.toPoint()));
  return static_cast<int>(std::lround(chart().mapToValue(inChart, bars_).x()));
}

}  // namespace tavoline
