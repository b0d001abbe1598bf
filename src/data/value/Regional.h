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
  std::string grouping = {};  ///< Between thousands: a comma, a point, or empty where neither stands there.

  static const RegionalFormat& current();
  static void set(RegionalFormat format);
  /// What LC_ALL, LC_NUMERIC, LC_TIME and LANG ask for; French for none, "C" and "POSIX".
  static RegionalFormat ofSystem();
};

/// Shortest general form with 15 significant digits: 12,5; 1200. From 1E15 on, and below 0,00001, with an
/// exponent.
std::string formatFloat(double v);
std::string formatFloat(long double v);  ///< The same digits of a result that is wider than a stored float.
std::string formatDate(DateTime v);      ///< "dd/MM/yyyy".
std::string formatDateTime(
    DateTime v);  ///< Date, then the time "HH:mm:ss" if there is one; time alone on the zero day.
/// A display format of zeros, hashes and a decimal point, as "00.00" or "%2.2f"; never changes what is
/// stored.
std::string formatPattern(std::string_view pattern, double v);

/// The display format of amounts in DA: two decimals.
inline constexpr std::string_view moneyFormat = "00.00";

std::int64_t readInteger(std::string_view text);  ///< Throws ConversionError; blanks around are allowed.
/// Which decimal marks a number may be written with.
enum class DecimalMark {
  Any,  ///< A comma or a point, whichever the region writes; but before three last digits, where the region's
        ///< grouping may be meant, its own alone.
  RegionalOnly
};
double readFloat(std::string_view text,
                 DecimalMark mark = DecimalMark::Any);  ///< Throws ConversionError.
/// As readFloat, for amounts that are computed with before they become text again. Throws ConversionError.
long double readExtended(std::string_view text, DecimalMark mark = DecimalMark::Any);
/// What formatDateTime writes, its parts also apart by '-' or '.', seconds or time optional; also the stored
/// form, year first. A year of two digits is of this century. Throws ConversionError.
DateTime readDateTime(std::string_view text);

}  // namespace tavoline
