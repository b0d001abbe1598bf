#include "data/value/DateTime.h"

#include <gtest/gtest.h>

#include "data/value/Clock.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

TEST(DateTime, KnowsTheCalendar) {
  EXPECT_EQ(DateTime::of(1899, 12, 30), DateTime());
  EXPECT_EQ(DateTime::of(1900, 1, 1).millis(), 2 * 86'400'000LL);
  EXPECT_EQ(DateTime::of(1899, 12, 29, 23, 59, 59, 999).millis(), -1);
  const struct {
    int year, month, day, hour, minute, second, milli;
    const char* stored;
  } cases[] = {
      {2024, 2, 29, 23, 59, 59, 999, "2024-02-29 23:59:59.999"},
      {1899, 12, 30, 8, 5, 0, 0, "1899-12-30 08:05:00.000"},
      {1, 1, 1, 0, 0, 0, 1, "0001-01-01 00:00:00.001"},
      {9999, 12, 31, 12, 0, 0, 0, "9999-12-31 12:00:00.000"},
  };
  for (const auto& c : cases) {
    const DateTime date = DateTime::of(c.year, c.month, c.day, c.hour, c.minute, c.second, c.milli);
    EXPECT_EQ(date.stored(), c.stored);
    EXPECT_EQ(DateTime::fromStored(c.stored), date);
    EXPECT_EQ(DateTime::of(date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second(),
                           date.milli()),
              date);
    EXPECT_EQ(date.date().millis() + date.time().millis(), date.millis());
  }
  const DateTime noon = DateTime::of(1899, 12, 30, 12);
  EXPECT_TRUE(!noon.hasDate() && noon.hasTime());
  EXPECT_TRUE(DateTime::of(1850, 1, 1).hasDate() && !DateTime::of(1850, 1, 1).hasTime());

  for (const auto& [year, month, day] : {std::tuple{2023, 2, 29},
                                         {2024, 13, 1},
                                         {2024, 0, 1},
                                         {2024, 1, 0},
                                         {0, 1, 1},
                                         {10000, 1, 1},
                                         {2024, 4, -31}})
    EXPECT_THROW(DateTime::of(year, month, day), ConversionError) << year << '-' << month << '-' << day;
  for (const auto& [hour, minute, second, milli] :
       {std::tuple{24, 0, 0, 0}, {0, 60, 0, 0}, {0, 0, 60, 0}, {0, 0, 0, 1000}, {-1, 0, 0, 0}})
    EXPECT_THROW(DateTime::of(2024, 1, 1, hour, minute, second, milli), ConversionError)
        << hour << ':' << minute;
}

TEST(DateTime, ReadsTheStoredForm) {
  EXPECT_EQ(DateTime::fromStored("2024-05-01"), DateTime::of(2024, 5, 1));
  EXPECT_EQ(DateTime::fromStored("2024-05-01 10:11:12"), DateTime::of(2024, 5, 1, 10, 11, 12));
  for (const char* text :
       {"", "2024-05-1", "2024-02-30", "2024-05-01T10:11:12", "2024-05-01 10:11", "2024-05-01 25:00:00",
        "2024-05-01 10:11:12,500", "2024-05-01 10:11:12.5", "x024-05-01", "2024/05/01"})
    EXPECT_EQ(DateTime::fromStored(text), std::nullopt) << text;
}

TEST(Clock, ShowsWhatItIsSetTo) {
  Clock::set([] { return DateTime::of(2024, 5, 1, 10, 0, 0, 5); });
  EXPECT_EQ(Clock::now().stored(), "2024-05-01 10:00:00.005");
  EXPECT_EQ(Clock::today(), DateTime::of(2024, 5, 1));
  Clock::set({});
  const DateTime before = Clock::now();
  EXPECT_GT(before, DateTime::of(2024, 5, 2));
  EXPECT_LE(before, Clock::now());
}

}  // namespace
}  // namespace tavoline
