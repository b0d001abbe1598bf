#include "toolkit/chart/ChartPane.h"

#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLegend>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QGraphicsLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QVBoxLayout>

#include "toolkit/controls/FingerScroll.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

ChartPane::ChartPane(QWidget* parent)
    : QFrame(parent), area_(new QScrollArea(this)), chart_(new QChart), view_(new QChartView(chart_)) {
  setProperty("kind", QStringLiteral("card"));
  chart_->setAnimationOptions(QChart::NoAnimation);
  chart_->setBackgroundBrush(QColor(theme().card));
  chart_->setBackgroundRoundness(0);
  chart_->layout()->setContentsMargins(0, 0, 0, 0);
  chart_->legend()->setLabelColor(QColor(theme().ink));
  chart_->legend()->setFont(smallFont());
  view_->setRenderHint(QPainter::Antialiasing);
  view_->setFrameShape(QFrame::NoFrame);
  view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view_->viewport()->installEventFilter(this);
  area_->setWidget(view_);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area_->viewport()->installEventFilter(this);
  fingers_ = std::make_unique<FingerScroll>(area_->viewport(), FingerScroll::ByPointer);
  title_ = new QLabel(this);
  title_->setAlignment(Qt::AlignCenter);
  QFont font = this->font();
  font.setPointSize(14);
  font.setBold(true);
  title_->setFont(font);
  legend_ = new QLabel(this);
  legend_->setAlignment(Qt::AlignCenter);
  legend_->setFont(smallFont());
  legend_->hide();
  foot_ = new QLabel(this);
  foot_->setProperty("kind", QStringLiteral("muted"));
  foot_->setAlignment(Qt::AlignCenter);
  foot_->hide();
  hint_ = new QLabel(area_);
  hint_->setProperty("kind", QStringLiteral("hint"));
  hint_->setAlignment(Qt::AlignCenter);
  hint_->setWordWrap(true);
  hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
  hint_->hide();
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(8, 6, 8, 4);
  whole->setSpacing(0);
  whole->addWidget(title_);
  whole->addWidget(legend_);
  whole->addWidget(area_, 1);
  whole->addWidget(foot_);
}

ChartPane::~ChartPane() {
  fingers_.reset();
}

QString ChartPane::chartLabels() const {
  return QString::fromStdString(rows_.joinedLabels());
}

QString ChartPane::chartValues() const {
  return QString::fromStdString(rows_.joinedValues());
}

void ChartPane::Clear() {
  forgetSeries();
  chart_->removeAllSeries();
  for (QAbstractAxis* axis : chart_->axes()) {
    chart_->removeAxis(axis);
    delete axis;
  }
  rows_ = {};
  hint_->hide();
  setAccessibleDescription({});
}

void ChartPane::HintWhenEmpty(const QString& hint) {
  hint_->setText(hint);
}

QFont ChartPane::smallFont() const {
  QFont font = this->font();
  font.setPointSize(10);
  return font;
}

void ChartPane::setTitle(const QString& title) {
  title_->setText(title);
  setAccessibleName(title);
  hint_->setVisible(rows_.size() == 0);
  setAccessibleDescription(
      QStringLiteral("Total : %1 DA").arg(QString::fromStdString(Value(rows_.total()).text())));
}

void ChartPane::setLegend(const QString& text, const QColor& colour) {
  legend_->setText(
      QStringLiteral("<span style=\"color:%1\">\u25A0</span> %2").arg(colour.name(), text.toHtmlEscaped()));
  legend_->show();
}

void ChartPane::setFoot(const QString& text) {
  foot_->setText(text);
  foot_->show();
}

void ChartPane::setNeededWidth(int pixels) {
  neededWidth_ = pixels;
  stretch();
}

void ChartPane::stretch() {
  const QSize room = area_->maximumViewportSize();
  const bool scrolls = neededWidth_ > room.width();
  const int height = room.height() - (scrolls ? area_->horizontalScrollBar()->sizeHint().height() : 0);
  view_->resize(std::max(neededWidth_, room.width()), std::max(height, 1));
  hint_->resize(room);
}

void ChartPane::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  stretch();
}

bool ChartPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == area_->viewport() && event->type() == QEvent::Resize) stretch();
  if (watched == view_->viewport() && event->type() == QEvent::MouseButtonRelease)
    tell(static_cast<QMouseEvent*>(event)->position().toPoint());
  return QFrame::eventFilter(watched, event);
}

void ChartPane::tell(QPoint place) const {
  const int point = pointAt(place);
  if (point < 0 || static_cast<std::size_t>(point) >= rows_.size()) return;
  const auto at = static_cast<std::size_t>(point);
  QToolTip::showText(view_->viewport()->mapToGlobal(place),
                     QString::fromStdString(rows_.labels[at] + " : " + rows_.values[at].text() + " DA"),
                     view_->viewport());
}

}  // namespace tavoline
