#include "data/value/Regional.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>

#include "data/value/Errors.h"

namespace tavoline {
namespace {

/// Sets a format, or the variables that the system tells one by, for one test.
class RegionalScope {
 public:
  RegionalScope() : before_(RegionalFormat::current()) {
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) {
      if (const char* value = std::getenv(name)) variables_[name] = value;
      unsetenv(name);
    }
  }
  ~RegionalScope() {
    RegionalFormat::set(before_);
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) unsetenv(name);
    for (const auto& [name, value] : variables_) setenv(name.c_str(), value.c_str(), 1);
  }
  RegionalScope(const RegionalScope&) = delete;
  RegionalScope& operator=(const RegionalScope&) = delete;

 private:
  RegionalFormat before_;
  std::map<std::string, std::string> variables_;
};

TEST(Regional, FloatsInTheirShortestForm) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {12.5, "12,5"},
      {1200, "1200"},
      {-3.25, "-3,25"},
      {0.1 + 0.2, "0,3"},
      {1.0 / 3, "0,333333333333333"},
      {2.0 / 3 * 100, "66,6666666666667"},
      {123456789012345.0, "123456789012345"},
      {999999999999999.9, "1E15"},
      {1e15, "1E15"},
      {-1.5e20, "-1,5E20"},
      {0.00001, "0,00001"},
      {0.0000099, "9,9E-6"},
      {0.05, "0,05"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(formatFloat(c.value), c.text);
    EXPECT_EQ(formatFloat(readFloat(c.text)), c.text);
  }
}

TEST(Regional, DisplayFormats) {
  const struct {
    const char* pattern;
    double value;
    const char* text;
  } cases[] = {
      {"00.00", 5, "05,00"},
      {"00.00", 1200, "1200,00"},
      {"00.00", -3.456, "-03,46"},
      {"00.00", 0, "00,00"},
      {"00.00", -0.001, "00,00"},
      {"0.00", 2.675, "2,68"},
      {"0.00", 99.995, "100,00"},
      {"0.00", 0.005, "0,01"},
      {"0.00", 0.0049, "0,00"},
      {"0", 0.5, "1"},
      {"0", 0.04, "0"},
      {"0.##", 12.5, "12,5"},
      {"0.##", 12, "12"},
      {"#.0#", 0.256, ",26"},
      {"0.00 DA", 12, "12,00 DA"},
      {"%2.2f", 5, "5,00"},
      {"%8.2f", 12.345, "   12,35"},
      {"%.0f", 12.5, "13"},
      {"%d", 12.5, "13"},
      {"%g", 12.5, "12,5"},
      {"", 12.5, "12,5"},
      {"0.00", 1e20, "100000000000000000000,00"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(formatPattern(c.pattern, c.value), c.text) << c.pattern << " of " << c.value;
}

TEST(Regional, ReadsNumbers) {
  const struct {
    const char* text;
    double value;
  } cases[] = {{"12", 12},  {" 12,5 ", 12.5}, {"12.5", 12.5}, {"-0,25", -0.25}, {"+3", 3},
               {",5", 0.5}, {"5,", 5},        {"1E3", 1000},  {"1,5e-2", 0.015}};
  for (const auto& c : cases) EXPECT_EQ(readFloat(c.text), c.value) << c.text;
  for (const char* text : {"", " ", "-", ",", "12a", "1 200", "1.200,5", "1,2,3", "--1", "1E", "E5", "inf",
                           "nan", "0x10", "1E999", "Label7"})
    EXPECT_THROW(readFloat(text), ConversionError) << text;
  EXPECT_EQ(readFloat("12,5", DecimalMark::RegionalOnly), 12.5);
  EXPECT_THROW(readFloat("12.5", DecimalMark::RegionalOnly), ConversionError);

  EXPECT_EQ(readInteger(" 42 "), 42);
  EXPECT_EQ(readInteger("+7"), 7);
  EXPECT_EQ(readInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const char* text : {"", "12,0", "12.0", "+-1", "+", "9223372036854775808", "1e3"})
    EXPECT_THROW(readInteger(text), ConversionError) << text;
}

TEST(Regional, DatesBothWays) {
  const DateTime evening = DateTime::of(2024, 5, 1, 18, 7, 9, 250);
  EXPECT_EQ(formatDateTime(evening), "01/05/2024 18:07:09");
  EXPECT_EQ(formatDateTime(evening.date()), "01/05/2024");
  EXPECT_EQ(formatDateTime(evening.time()), "18:07:09");
  EXPECT_EQ(formatDateTime(DateTime()), "00:00:00");
  EXPECT_EQ(formatDate(evening), "01/05/2024");

  const struct {
    const char* text;
    DateTime value;
  } cases[] = {
      {"01/05/2024", DateTime::of(2024, 5, 1)},
      {" 1/5/2024 ", DateTime::of(2024, 5, 1)},
      {"01-05-2024", DateTime::of(2024, 5, 1)},
      {"01.05.24", DateTime::of(2024, 5, 1)},
      {"2024-05-01", DateTime::of(2024, 5, 1)},
      {"01/05/2024 18:07:09", DateTime::of(2024, 5, 1, 18, 7, 9)},
      {"01/05/2024  8:07", DateTime::of(2024, 5, 1, 8, 7)},
      {"18:07:09", DateTime::of(1899, 12, 30, 18, 7, 9)},
      {"2024-05-01 18:07:09.250", evening},
  };
  for (const auto& c : cases) EXPECT_EQ(readDateTime(c.text), c.value) << c.text;
  for (const char* text : {"", "demain", "32/01/2024", "29/02/2023", "01/05", "01/05/2024/", "01/05/202",
                           "001/05/2024", "01/05/2024 18", "01/05/2024 24:00", "01/05/2024 18:07:", "18:60",
                           "12", "2024/05/01 x", "01 05 2024", "01/05/2024 18:07:09 soir"})
    EXPECT_THROW(readDateTime(text), ConversionError) << text;
}

TEST(Regional, FollowsAnotherFormat) {
  const RegionalScope scope;
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

TEST(Regional, FrenchWhereTheSystemSaysNothing) {
  const RegionalScope scope;
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

}  // namespace
}  // namespace tavoline
