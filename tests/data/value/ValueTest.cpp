// What a text cannot tell: the clock, ill-formed bytes, values that are none.

#include "data/value/Value.h"

#include <gtest/gtest.h>

#include <cmath>

#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"

namespace tavoline {
namespace {

TEST(Clock, ShowsWhatItIsSetTo) {
  Clock::set([] { return DateTime::of(2024, 5, 1, 10, 0, 0, 5); });
  EXPECT_EQ(Clock::now().stored(), "2024-05-01 10:00:00.005");
  EXPECT_EQ(Clock::today(), DateTime::of(2024, 5, 1));
  Clock::set({});
  const DateTime before = Clock::now();
  EXPECT_GT(before, DateTime::of(2024, 5, 2));
  EXPECT_LE(before, Clock::now());
}

TEST(Text, IllFormedBytesStandForThemselves) {
  const std::string odd = "\xC3 \xE9t\xE9 \xF0\x9F \xED\xA0\x80 \xC0\x80";
  EXPECT_EQ(foldCase(odd), odd);
  EXPECT_EQ(characterCount("\xE9t\xE9\xC3"), 4U);
  EXPECT_TRUE(matchesLike("\xE9t\xE9", "_t_"));
  EXPECT_TRUE(matchesLike("ab\ncd", "ab%d"));
  EXPECT_FALSE(matchesLike(std::string(3000, 'a'), "%a%a%a%a%a%a%a%a%b")) << "and in a short while";
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
