#pragma once

#include <string>
#include <string_view>

#include "data/value/Value.h"

namespace tavoline {

/// How numbers and dates are written and read: French when the system says nothing.
struct RegionalFormat {
  std::string decimal = ",";
  char dateSeparator = '/';
  enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay } order = DateOrder::DayMonthYear;

  static const RegionalFormat& current();
  static void set(RegionalFormat format);
  /// What LC_ALL, LC_NUMERIC, LC_TIME and LANG ask for; French for none, "C" and "POSIX".
  static RegionalFormat ofSystem();
};

std::string formatFloat(double v);              ///< Shortest general form with 15 significant digits: 12,5; 1200.
std::string formatDate(DateTime v);             ///< "dd/MM/yyyy".
std::string formatDateTime(DateTime v);         ///< Date, then the time "HH:mm:ss" if there is one; time alone on the zero day.
/// A display format of zeros, hashes and a decimal point, as "00.00" or "%2.2f"; never changes what is stored.
std::string formatPattern(std::string_view pattern, double v);

std::int64_t readInteger(std::string_view text);  ///< Throws ConversionError; blanks around are allowed.
double readFloat(std::string_view text);          ///< The regional separator, or a point. Throws ConversionError.
DateTime readDateTime(std::string_view text);     ///< What formatDateTime writes, seconds or time optional. Throws ConversionError.

}  // namespace tavoline
