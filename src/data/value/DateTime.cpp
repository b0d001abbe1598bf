#include "data/value/DateTime.h"

#include <chrono>
#include <cstdio>

#include "data/value/Errors.h"

namespace tavoline {
namespace {

using namespace std::chrono;

constexpr sys_days kZeroDay = sys_days{year{1899} / December / 30};

std::int64_t floorDays(std::int64_t ms) {
  return ms >= 0 ? ms / kMillisecondsPerDay : -((-ms + kMillisecondsPerDay - 1) / kMillisecondsPerDay);
}

year_month_day calendar(std::int64_t ms) {
  return year_month_day{kZeroDay + days{floorDays(ms)}};
}

std::int64_t millisOfDay(std::int64_t ms) {
  return ms - floorDays(ms) * kMillisecondsPerDay;
}

bool validTime(int hour, int minute, int second, int milli) {
  return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60 && milli >= 0 &&
         milli < 1000;
}

bool validDay(int y, int month, int day) {
  if (y < 1 || y > 9999 || month < 1 || day < 1) return false;
  return year_month_day{std::chrono::year{y}, std::chrono::month(static_cast<unsigned>(month)),
                        std::chrono::day(static_cast<unsigned>(day))}
      .ok();
}

std::int64_t millisOf(int y, int month, int day, int hour, int minute, int second, int milli) {
  const year_month_day date{std::chrono::year{y}, std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day))};
  const std::int64_t wholeDays = (sys_days{date} - kZeroDay).count();
  return wholeDays * kMillisecondsPerDay + ((hour * 60LL + minute) * 60 + second) * 1000 + milli;
}

/// The digits of `text` at `at`; -1 unless all `length` characters are digits.
int digits(std::string_view text, std::size_t at, std::size_t length) {
  if (text.size() < at + length) return -1;
  int value = 0;
  for (const char c : text.substr(at, length)) {
    if (c < '0' || c > '9') return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace

DateTime DateTime::of(int year, int month, int day, int hour, int minute, int second, int milli) {
  if (!validDay(year, month, day) || !validTime(hour, minute, second, milli)) {
    char text[96];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d:%02d", day, month, year, hour, minute, second);
    throw ConversionError("« " + std::string(text) + " » n'est pas une date du calendrier.");
  }
  return fromMillis(millisOf(year, month, day, hour, minute, second, milli));
}

DateTime DateTime::fromMillis(std::int64_t sinceZeroDay) {
  DateTime result;
  result.ms_ = sinceZeroDay;
  return result;
}

std::optional<DateTime> DateTime::fromStored(std::string_view text) {
  const auto is = [&](std::size_t at, char c) { return text[at] == c; };
  const std::size_t size = text.size();
  if (size != 10 && size != 19 && size != 23) return std::nullopt;
  if (!is(4, '-') || !is(7, '-')) return std::nullopt;
  const int y = digits(text, 0, 4), month = digits(text, 5, 2), day = digits(text, 8, 2);
  int hour = 0, minute = 0, second = 0, milli = 0;
  if (size >= 19) {
    if (!is(10, ' ') || !is(13, ':') || !is(16, ':')) return std::nullopt;
    hour = digits(text, 11, 2), minute = digits(text, 14, 2), second = digits(text, 17, 2);
  }
  if (size == 23) {
    if (!is(19, '.')) return std::nullopt;
    milli = digits(text, 20, 3);
  }
  if (!validDay(y, month, day) || !validTime(hour, minute, second, milli)) return std::nullopt;
  return fromMillis(millisOf(y, month, day, hour, minute, second, milli));
}

std::string DateTime::stored() const {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%03d", year(), month(), day(), hour(),
                minute(), second(), milli());
  return text;
}

int DateTime::year() const {
  return static_cast<int>(calendar(ms_).year());
}
int DateTime::month() const {
  return static_cast<int>(static_cast<unsigned>(calendar(ms_).month()));
}
int DateTime::day() const {
  return static_cast<int>(static_cast<unsigned>(calendar(ms_).day()));
}
int DateTime::hour() const {
  return static_cast<int>(millisOfDay(ms_) / 3'600'000);
}
int DateTime::minute() const {
  return static_cast<int>(millisOfDay(ms_) / 60'000 % 60);
}
int DateTime::second() const {
  return static_cast<int>(millisOfDay(ms_) / 1000 % 60);
}
int DateTime::milli() const {
  return static_cast<int>(millisOfDay(ms_) % 1000);
}

DateTime DateTime::date() const {
  return fromMillis(floorDays(ms_) * kMillisecondsPerDay);
}
DateTime DateTime::time() const {
  return fromMillis(millisOfDay(ms_));
}
bool DateTime::hasDate() const {
  return floorDays(ms_) != 0;
}
bool DateTime::hasTime() const {
  return millisOfDay(ms_) != 0;
}

}  // namespace tavoline
