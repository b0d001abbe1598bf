#include "data/value/Regional.h"

#include <langinfo.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {
namespace {

RegionalFormat& mutableFormat() {
  static RegionalFormat format = RegionalFormat::ofSystem();
  return format;
}

/// What a category of the system's locale is set to; empty for none and for the locale that says nothing.
std::string localeName(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* name = std::getenv(variable);
    if (name == nullptr || *name == '\0') continue;
    const std::string_view value(name);
    if (value == "POSIX" || value == "C" || value.substr(0, 2) == "C.") return {};
    return name;
  }
  return {};
}

/// One fact of an installed locale; empty if the system has no such locale.
std::string localeFact(const std::string& name, int mask, nl_item item) {
  if (name.empty()) return {};
  const locale_t locale = newlocale(mask, name.c_str(), nullptr);
  if (locale == nullptr) return {};
  std::string fact = nl_langinfo_l(item, locale);
  freelocale(locale);
  return fact;
}

/// Takes order and separator from a date format such as "%d/%m/%Y".
void readDateFormat(std::string pattern, RegionalFormat& format) {
  if (pattern == "%D") pattern = "%m/%d/%y";
  if (pattern == "%F") pattern = "%Y-%m-%d";
  const auto day = pattern.find_first_of("de"), month = pattern.find('m'), year = pattern.find_first_of("yY");
  if (std::max({day, month, year}) == std::string::npos) return;
  using Order = RegionalFormat::DateOrder;
  format.order = year < month ? Order::YearMonthDay : month < day ? Order::MonthDayYear : Order::DayMonthYear;
  const auto separator = pattern.find_first_of("/-.");
  if (separator != std::string::npos) format.dateSeparator = pattern[separator];
}

/// Up to `most` digits at `at`, which moves on behind them; -1 if there is none, or more of them.
int readDigits(std::string_view text, std::size_t& at, std::size_t most) {
  const std::size_t start = at;
  int value = 0;
  while (at < text.size() && isDigit(text[at]) && at - start < most) value = value * 10 + (text[at++] - '0');
  const bool more = at < text.size() && isDigit(text[at]);
  return at == start || more ? -1 : value;
}

struct TimeParts {
  int hour = 0, minute = 0, second = 0;
};

/// "HH:mm" or "HH:mm:ss".
bool readTime(std::string_view text, TimeParts& time) {
  std::size_t at = 0;
  time.hour = readDigits(text, at, 2);
  if (time.hour < 0 || at >= text.size() || text[at++] != ':') return false;
  time.minute = readDigits(text, at, 2);
  if (time.minute < 0) return false;
  if (at == text.size()) return true;
  if (text[at++] != ':') return false;
  time.second = readDigits(text, at, 2);
  return time.second >= 0 && at == text.size();
}

struct DateParts {
  int year = 0, month = 0, day = 0;
};

bool readDate(std::string_view text, DateParts& date) {
  const auto isSeparator = [](char c) {
    return c == '/' || c == '-' || c == '.' || c == RegionalFormat::current().dateSeparator;
  };
  int parts[3];
  std::size_t lengths[3];
  std::size_t at = 0;
  for (int i = 0; i < 3; ++i) {
    if (i > 0 && (at >= text.size() || !isSeparator(text[at++]))) return false;
    const std::size_t start = at;
    parts[i] = readDigits(text, at, 4);
    lengths[i] = at - start;
    if (parts[i] < 0) return false;
  }
  if (at != text.size()) return false;

  using Order = RegionalFormat::DateOrder;
  const Order order = lengths[0] == 4 ? Order::YearMonthDay : RegionalFormat::current().order;
  const int yearAt = order == Order::YearMonthDay ? 0 : 2;
  const int monthAt = order == Order::MonthDayYear ? 0 : 1;
  const int dayAt = 3 - yearAt - monthAt;
  date = {parts[yearAt], parts[monthAt], parts[dayAt]};
  if (lengths[yearAt] <= 2) date.year += 2000;
  return lengths[yearAt] != 3 && lengths[monthAt] <= 2 && lengths[dayAt] <= 2;
}

[[noreturn]] void notADate(std::string_view text) {
  throw ConversionError("« " + std::string(text) + " » n'est pas une date.");
}

}  // namespace

const RegionalFormat& RegionalFormat::current() {
  return mutableFormat();
}

void RegionalFormat::set(RegionalFormat format) {
  mutableFormat() = std::move(format);
}

RegionalFormat RegionalFormat::ofSystem() {
  RegionalFormat format;
  const std::string decimal = localeFact(localeName("LC_NUMERIC"), LC_NUMERIC_MASK, RADIXCHAR);
  if (!decimal.empty()) format.decimal = decimal;
  const std::string grouping = localeFact(localeName("LC_NUMERIC"), LC_NUMERIC_MASK, THOUSEP);
  if (grouping == "," || grouping == ".") format.grouping = grouping;
  readDateFormat(localeFact(localeName("LC_TIME"), LC_TIME_MASK, D_FMT), format);
  return format;
}

std::string formatDate(DateTime v) {
  const RegionalFormat& format = RegionalFormat::current();
  const char s = format.dateSeparator;
  char text[64];
  switch (format.order) {
    case RegionalFormat::DateOrder::DayMonthYear:
      std::snprintf(text, sizeof text, "%02d%c%02d%c%04d", v.day(), s, v.month(), s, v.year());
      break;
    case RegionalFormat::DateOrder::MonthDayYear:
      std::snprintf(text, sizeof text, "%02d%c%02d%c%04d", v.month(), s, v.day(), s, v.year());
      break;
    case RegionalFormat::DateOrder::YearMonthDay:
      std::snprintf(text, sizeof text, "%04d%c%02d%c%02d", v.year(), s, v.month(), s, v.day());
      break;
  }
  return text;
}

std::string formatDateTime(DateTime v) {
  char time[48];
  std::snprintf(time, sizeof time, "%02d:%02d:%02d", v.hour(), v.minute(), v.second());
  if (!v.hasDate()) return time;
  return v.hasTime() ? formatDate(v) + ' ' + time : formatDate(v);
}

DateTime readDateTime(std::string_view text) {
  const std::string_view body = trimmed(text);
  const std::size_t blank = body.find(' ');
  TimeParts time;
  DateParts date{1899, 12, 30};
  const bool timeAlone = blank == std::string_view::npos && body.find(':') != std::string_view::npos;
  if (!timeAlone && !readDate(body.substr(0, blank), date)) {
    if (const auto stored = DateTime::fromStored(body)) return *stored;
    notADate(text);
  }
  if (timeAlone && !readTime(body, time)) notADate(text);
  if (blank != std::string_view::npos && !readTime(trimmed(body.substr(blank)), time)) {
    if (const auto stored = DateTime::fromStored(body)) return *stored;
    notADate(text);
  }
  try {
    return DateTime::of(date.year, date.month, date.day, time.hour, time.minute, time.second);
  } catch (const ConversionError&) {
    notADate(text);
  }
}

}  // namespace tavoline
