#include "toolkit/controls/DateEdit.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QTextCharFormat>
#include <QtWidgets/QCalendarWidget>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {
constexpr int calendarGap = 2;  // pixels between an input and its calendar

// A year in four figures: "1/2/20" may be on its way to "1/2/2025".
bool hasWholeYear(const QString& text) {
  static const QRegularExpression year(QStringLiteral("\\d{4}"));
  return year.match(text).hasMatch();
}
}  // namespace

DateEdit::DateEdit(QWidget* parent) : Edit(parent) {
  setPlaceholderText(QStringLiteral("jj/mm/aaaa"));
  QAction* open = addAction(QIcon::fromTheme(QStringLiteral("view-calendar")), QLineEdit::TrailingPosition);
  open->setToolTip(QStringLiteral("Choisir un jour"));
  connect(open, &QAction::triggered, this, [this] { guarded([this] { openCalendar(); }); });
}

std::optional<DateTime> DateEdit::Date() const {
  try {
    const DateTime day = readDateTime(text().toStdString()).date();
    if (day.hasDate()) return day;
  } catch (const ConversionError&) {  // unfinished
  }
  return std::nullopt;
}

void DateEdit::Date(DateTime day) {
  last_ = QString::fromStdString(formatDate(day));
  Text(formatDate(day));
}

void DateEdit::typed() {
  if (!text().isEmpty() && !(hasWholeYear(text()) && Date())) return;
  last_ = text();
  Edit::typed();
}

void DateEdit::finish() {
  if (text().isEmpty() || text() == last_) return;
  if (const auto day = Date()) return Date(*day);
  const std::string wrong = text().toStdString();
  setText(last_);
  throw ConversionError("« " + wrong + " » n'est pas une date. Écrivez-la sous la forme jj/mm/aaaa.");
}

void DateEdit::focusLeft() {
  finish();
  Edit::focusLeft();
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !guarded([this] { finish(); })) return;
  Edit::keyPressEvent(event);
}

void DateEdit::sayButton(const char* name, const char* words) {
  if (auto* button = calendar_->findChild<QWidget*>(QString::fromLatin1(name)))
    button->setAccessibleName(QString::fromUtf8(words));
}

/// Below the input, or above it where the display ends sooner.
QPoint DateEdit::placeFor(QSize calendar) const {
  const QRect display = screen()->availableGeometry();
  QRect place(mapToGlobal(QPoint(0, height() + calendarGap)), calendar);
  if (place.bottom() > display.bottom()) place.moveBottom(mapToGlobal(QPoint(0, -calendarGap)).y());
  if (place.right() > display.right()) place.moveRight(display.right());
  return place.topLeft();
}

void DateEdit::openCalendar() {
  if (!calendar_) {
    calendar_ = new QCalendarWidget(this);
    calendar_->setWindowFlags(Qt::Popup);
    calendar_->setLocale(QLocale(QLocale::French));
    calendar_->setFirstDayOfWeek(Qt::Sunday);
    calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar_->setHorizontalHeaderFormat(QCalendarWidget::SingleLetterDayNames);
    sayButton("qt_calendar_prevmonth", "Mois précédent");
    sayButton("qt_calendar_nextmonth", "Mois suivant");
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {  // red is for what is wrong
      calendar_->setWeekdayTextFormat(day, QTextCharFormat());
    }
    connect(calendar_, &QCalendarWidget::clicked, this, [this](QDate day) {
      calendar_->hide();
      guarded([&] { Date(DateTime::of(day.year(), day.month(), day.day())); });
    });
  }
  const DateTime day = Date().value_or(Clock::today());
  calendar_->setSelectedDate(QDate(day.year(), day.month(), day.day()));
  calendar_->resize(calendar_->sizeHint().expandedTo({380, 340}));
  calendar_->move(placeFor(calendar_->size()));
  calendar_->show();
}

}  // namespace tavoline
