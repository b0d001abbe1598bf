#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavoline {

inline constexpr std::int64_t kMillisecondsPerDay = 24LL * 60 * 60 * 1000;

/// A calendar date with a time of day, in local wall-clock time, to the millisecond. A time of day alone
/// stands on the zero day, 30 December 1899, and shows without its date.
class DateTime {
 public:
  DateTime() = default;  ///< The zero day at midnight.

  /// Throws ConversionError for a day that the calendar does not have, or a time outside 0:00 to
  /// 23:59:59.999.
  static DateTime of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                     int milli = 0);
  static DateTime fromMillis(std::int64_t sinceZeroDay);
  /// Reads the stored form "YYYY-MM-DD HH:MM:SS.SSS"; the time, or its milliseconds, may be missing.
  static std::optional<DateTime> fromStored(std::string_view text);

  std::string stored() const;  ///< "YYYY-MM-DD HH:MM:SS.SSS": sorts as it compares.

  int year() const;
  int month() const;  ///< 1 to 12.
  int day() const;    ///< 1 to 31.
  int hour() const;
  int minute() const;
  int second() const;
  int milli() const;
  std::int64_t millis() const { return ms_; }  ///< Milliseconds since the zero day.

  DateTime date() const;  ///< The same day at midnight.
  DateTime time() const;  ///< The same time on the zero day.
  bool hasDate() const;   ///< False on the zero day.
  bool hasTime() const;   ///< False at midnight.

  friend bool operator==(const DateTime&, const DateTime&) = default;
  friend std::strong_ordering operator<=>(const DateTime& a, const DateTime& b) { return a.ms_ <=> b.ms_; }

 private:
  std::int64_t ms_ = 0;
};

}  // namespace tavoline
