#include "toolkit/controls/DateEdit.h"

#include <QtCore/QLocale>
#include <QtGui/QAction>
#include <QtWidgets/QCalendarWidget>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {
constexpr int firstYear = 1900;  // "1/2/2" on the way to "1/2/2025" is no day yet
}

DateEdit::DateEdit(QWidget* parent) : Edit(parent) {
  setPlaceholderText(QStringLiteral("jj/mm/aaaa"));
  QAction* open = addAction(QIcon::fromTheme(QStringLiteral("view-calendar")), QLineEdit::TrailingPosition);
  open->setToolTip(QStringLiteral("Choisir un jour"));
  connect(open, &QAction::triggered, this, [this] { guarded([this] { openCalendar(); }); });
}

std::optional<DateTime> DateEdit::Date() const {
  try {
    const DateTime day = readDateTime(text().toStdString()).date();
    if (day.year() >= firstYear) return day;
  } catch (const ConversionError&) {  // unfinished
  }
  return std::nullopt;
}

void DateEdit::Date(DateTime day) {
  last_ = QString::fromStdString(formatDate(day));
  Text(formatDate(day));
}

void DateEdit::typed() {
  if (!text().isEmpty() && !Date()) return;
  last_ = text();
  Edit::typed();
}

void DateEdit::focusLeft() {
  if (!text().isEmpty() && !Date()) {
    const std::string wrong = text().toStdString();
    setText(last_);
    throw ConversionError("« " + wrong + " » n'est pas une date. Écrivez-la sous la forme jj/mm/aaaa.");
  }
  Edit::focusLeft();
}

void DateEdit::openCalendar() {
  if (!calendar_) {
    calendar_ = new QCalendarWidget(this);
    calendar_->setWindowFlags(Qt::Popup);
    calendar_->setLocale(QLocale(QLocale::French));
    calendar_->setFirstDayOfWeek(Qt::Sunday);
    calendar_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    connect(calendar_, &QCalendarWidget::clicked, this, [this](QDate day) {
      calendar_->hide();
      guarded([&] { Date(DateTime::of(day.year(), day.month(), day.day())); });
    });
  }
  const DateTime day = Date().value_or(Clock::today());
  calendar_->setSelectedDate(QDate(day.year(), day.month(), day.day()));
  calendar_->resize(calendar_->sizeHint().expandedTo({380, 340}));
  calendar_->move(mapToGlobal(QPoint(0, height() + 2)));
  calendar_->show();
}

}  // namespace tavoline
