// What a text cannot tell: limits of the calendar and of numbers, the clock, other formats, ill-formed bytes.

#include "data/value/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"

namespace tavoline {
namespace {

TEST(DateTime, KnowsTheCalendar) {
  EXPECT_EQ(DateTime::of(1899, 12, 30), DateTime());
  EXPECT_EQ(DateTime::of(1900, 1, 1).millis(), 2 * 86'400'000LL);
  EXPECT_EQ(DateTime::of(1899, 12, 29, 23, 59, 59, 999).millis(), -1);
  for (const char* stored : {"2024-02-29 23:59:59.999", "1899-12-30 08:05:00.000", "0001-01-01 00:00:00.001",
                             "9999-12-31 12:00:00.000"}) {
    const DateTime date = DateTime::fromStored(stored).value();
    EXPECT_EQ(date.stored(), stored);
    EXPECT_EQ(DateTime::of(date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second(),
                           date.milli()),
              date);
    EXPECT_EQ(date.date().millis() + date.time().millis(), date.millis());
  }
  const DateTime noon = DateTime::of(1899, 12, 30, 12);
  EXPECT_TRUE(!noon.hasDate() && noon.hasTime());
  EXPECT_TRUE(DateTime::of(1850, 1, 1).hasDate() && !DateTime::of(1850, 1, 1).hasTime());

  const int none[][7] = {{2023, 2, 29},
                         {2024, 13, 1},
                         {2024, 0, 1},
                         {2024, 1, 0},
                         {0, 1, 1},
                         {10000, 1, 1},
                         {2024, 4, -31},
                         {2024, 1, 1, 24},
                         {2024, 1, 1, 0, 60},
                         {2024, 1, 1, 0, 0, 60},
                         {2024, 1, 1, 0, 0, 0, 1000},
                         {2024, 1, 1, -1}};
  for (const auto& [year, month, day, hour, minute, second, milli] : none)
    EXPECT_THROW(DateTime::of(year, month, day, hour, minute, second, milli), ConversionError)
        << year << '-' << month << '-' << day << ' ' << hour << ':' << minute;
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

/// The variables by which the system tells its format, cleared for one test.
class Regional : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : kNames) {
      if (const char* value = std::getenv(name)) variables_.emplace_back(name, value);
      unsetenv(name);
    }
  }
  void TearDown() override {
    RegionalFormat::set(before_);
    for (const auto& [name, value] : variables_) setenv(name.c_str(), value.c_str(), 1);
  }

 private:
  static constexpr const char* kNames[] = {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"};
  RegionalFormat before_ = RegionalFormat::current();
  std::vector<std::pair<std::string, std::string>> variables_;
};

TEST_F(Regional, FollowsAnotherFormat) {
  RegionalFormat::set({".", '-', RegionalFormat::DateOrder::MonthDayYear});
  EXPECT_EQ(formatFloat(12.5), "12.5");
  EXPECT_THROW(readFloat("12,5"), ConversionError);
  EXPECT_EQ(formatPattern("00.00", 5), "05.00");
  EXPECT_EQ(formatDate(DateTime::of(2024, 5, 1)), "05-01-2024");
  EXPECT_EQ(readDateTime("05/01/2024"), DateTime::of(2024, 5, 1));
  RegionalFormat::set({"٫", '.', RegionalFormat::DateOrder::YearMonthDay});
  EXPECT_EQ(readFloat(formatFloat(-12.5)), -12.5);
  EXPECT_EQ(formatDate(DateTime::of(2024, 5, 1)), "2024.05.01");
  EXPECT_EQ(readDateTime("24.5.1 10:00"), DateTime::of(2024, 5, 1, 10));
}

TEST_F(Regional, FrenchWhereTheSystemSaysNothing) {
  for (const char* locale : {"", "C", "POSIX", "C.UTF-8", "xx_XX.none"}) {
    for (const char* variable : {"LC_ALL", "LANG"}) {
      setenv(variable, locale, 1);
      const RegionalFormat format = RegionalFormat::ofSystem();
      EXPECT_EQ(format.decimal, ",") << locale;
      EXPECT_EQ(format.dateSeparator, '/') << locale;
      EXPECT_EQ(format.order, RegionalFormat::DateOrder::DayMonthYear) << locale;
      unsetenv(variable);
    }
  }
}

TEST_F(Regional, DatesShowWhatTheyHave) {
  const DateTime evening = DateTime::of(2024, 5, 1, 18, 7, 9, 250);
  EXPECT_EQ(formatDateTime(evening), "01/05/2024 18:07:09");
  EXPECT_EQ(formatDateTime(evening.date()), "01/05/2024");
  EXPECT_EQ(formatDateTime(evening.time()), "18:07:09");
  EXPECT_EQ(formatDateTime(DateTime()), "00:00:00");
  EXPECT_EQ(formatDate(evening), "01/05/2024");
  EXPECT_EQ(readFloat("12,5", DecimalMark::RegionalOnly), 12.5);
  EXPECT_THROW(readFloat("12.5", DecimalMark::RegionalOnly), ConversionError);
}

TEST(Text, IllFormedBytesStandForThemselves) {
  const std::string odd = "\xC3 \xE9t\xE9 \xF0\x9F \xED\xA0\x80 \xC0\x80";
  EXPECT_EQ(foldCase(odd), odd);
  EXPECT_EQ(characterCount("\xE9t\xE9\xC3"), 4U);
  EXPECT_TRUE(matchesLike("\xE9t\xE9", "_t_"));
  EXPECT_TRUE(matchesLike("ab\ncd", "ab%d"));
  EXPECT_FALSE(matchesLike(std::string(3000, 'a'), "%a%a%a%a%a%a%a%a%b")) << "and in a short while";
}

TEST(Text, NamesAndQuotes) {
  EXPECT_TRUE(sameName("ID_Caise", "id_caise"));
  EXPECT_FALSE(sameName("caise", "caisse"));
  EXPECT_FALSE(sameName("É", "é"));
  EXPECT_EQ(foldName("N_Facture"), "n_facture");
  EXPECT_EQ(inQuotes(""), "''");
  EXPECT_EQ(inQuotes("l'été d'Aïn"), "'l''été d''Aïn'");
}

TEST(Value, WithoutAValueOrARoundedOne) {
  EXPECT_EQ((Value(0.1) + 0.2).toFloat(), 0.1 + 0.2) << "nothing is rounded";
  EXPECT_EQ(Value(100) * 19 / 100 - 19, Value(0.0));
  EXPECT_TRUE((Value(std::nan("")) <=> Value(std::nan(""))) == std::partial_ordering::unordered);
  EXPECT_THROW(Value(DateTime()) + std::nan(""), ConversionError);
  EXPECT_EQ(formatFloat(std::nan("")) + formatFloat(1e308 * -10), "non défini-infini");
  EXPECT_THROW(Value().toInteger(), ConversionError);
  EXPECT_THROW(Value().toFloat(), ConversionError);
  EXPECT_THROW(Value().toDateTime(), ConversionError);
  EXPECT_EQ(Value().text() + Value(std::make_shared<const Bytes>(Bytes{65})).text(), "");
  EXPECT_TRUE(Value(SharedBytes()).isNull());
  EXPECT_EQ(Value().toBytes(), nullptr);
}

}  // namespace
}  // namespace tavoline
