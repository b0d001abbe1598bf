#pragma once

#include <optional>

#include "data/value/DateTime.h"
#include "toolkit/controls/Edit.h"

class QCalendarWidget;

namespace tavoline {

/// An input for a day, typed or picked from a calendar; it may be empty. OnChange fires when it became a
/// whole day or empty, and not on the way there.
class DateEdit : public Edit {
  Q_OBJECT

 public:
  explicit DateEdit(QWidget* parent = nullptr);

  std::optional<DateTime> Date() const;  ///< At midnight; empty while there is no whole day.
  void Date(DateTime day);               ///< By code; a real change fires OnChange.

 protected:
  void typed() override;
  void focusLeft() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool typedOver() const override { return true; }

 private:
  /// An unfinished day gives way to the last whole one. Throws ConversionError.
  void finish();
  void openCalendar();
  void sayButton(const char* name, const char* words);
  QPoint placeFor(QSize calendar) const;

  QCalendarWidget* calendar_ = nullptr;
  QString last_;  // the last whole day as it was written, or empty
};

}  // namespace tavoline
