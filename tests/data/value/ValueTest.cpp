#include "data/value/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "data/value/Errors.h"

namespace tavoline {

void PrintTo(const Value& value, std::ostream* out) {
  *out << (value.isNull()      ? "null"
           : value.isInteger() ? "whole "
           : value.isFloat()   ? "float "
                               : "")
       << value.text();
}

namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

Value picture(std::initializer_list<std::uint8_t> bytes) {
  return std::make_shared<const Bytes>(bytes);
}
DateTime may(int day, int hour = 0, int minute = 0) {
  return DateTime::of(2024, 5, day, hour, minute);
}

TEST(Value, Arithmetic) {
  const struct {
    Value result, expected;
  } cases[] = {
      {Value(2) + 3, 5},
      {Value(2) + 0.5, 2.5},
      {Value("2") + 3, 5},
      {Value("2,5") + "0.5", 3.0},
      {Value(" 7 ") - "8", -1},
      {Value(3) * 120.5, 361.5},
      {Value(10) / 4, 2.5},
      {Value(8) / "2", 4.0},
      {Value(100) * 19 / 100 - 19, 0.0},
      {Value(kMost) + 1, static_cast<double>(kMost) + 1},
      {Value(kMost) * 2, static_cast<double>(kMost) * 2},
      {Value() + 1, Value()},
      {Value("x") * Value(), Value()},
      {Value() / 0, Value()},
      {Value(may(1)) + 1, may(2)},
      {Value(may(1)) - 0.5, DateTime::of(2024, 4, 30, 12)},
      {Value(may(1)) + DateTime::fromMillis(0), may(1)},
      {Value(may(1)) + DateTime::of(1899, 12, 30, 14, 30), may(1, 14, 30)},
      {Value(may(2, 12)) - may(1), 1.5},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.result, c.expected);
    EXPECT_EQ(c.result.isFloat(), c.expected.isFloat()) << c.expected.text();
  }
  EXPECT_EQ((Value(0.1) + 0.2).toFloat(), 0.1 + 0.2) << "nothing is rounded";
}

TEST(Value, ArithmeticThatHasNoResult) {
  EXPECT_THROW(Value("douze") + 1, ConversionError);
  EXPECT_THROW(Value("") + 1, ConversionError);
  EXPECT_THROW(Value(1) - Value(may(1)), ConversionError);
  EXPECT_THROW(Value(may(1)) * 2, ConversionError);
  EXPECT_THROW(Value(1) / 0, ConversionError);
  EXPECT_THROW(Value(1) / "0,0", ConversionError);
  EXPECT_THROW(picture({1}) + 1, ConversionError);
  EXPECT_THROW(Value(may(1)) + 1e12, ConversionError);
  EXPECT_THROW(Value(may(1)) + std::nan(""), ConversionError);
}

TEST(Value, Comparison) {
  const std::partial_ordering less = std::partial_ordering::less, equal = std::partial_ordering::equivalent,
                              greater = std::partial_ordering::greater,
                              none = std::partial_ordering::unordered;
  const struct {
    Value a, b;
    std::partial_ordering order;
  } cases[] = {
      {Value(), Value(), equal},
      {Value(), 0, less},
      {Value(), "", less},
      {Value(), -5.0, less},
      {1, 2, less},
      {2, 2.0, equal},
      {kMost, static_cast<double>(kMost), less},
      {2.5, 2, greater},
      {"10", "9", less},
      {"OUI", "oui", less},
      {"é", "z", greater},
      {"10", 9, greater},
      {9, "10", less},
      {"12,5", 12.5, equal},
      {"x", 9, none},
      {"", 0, none},
      {may(2), may(1), greater},
      {"01/05/2024", may(1), equal},
      {may(1), "01/05/2024 00:01:00", less},
      {"demain", may(1), none},
      {may(1), 1, none},
      {picture({1, 2}), picture({1, 2}), equal},
      {picture({1, 2}), picture({2}), less},
      {picture({1}), 1, none},
      {std::nan(""), std::nan(""), none},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.a.text() + " <=> " + c.b.text());
    EXPECT_TRUE((c.a <=> c.b) == c.order);
    EXPECT_EQ(c.b<c.a, c.a> c.b);
    EXPECT_EQ(c.b >= c.a, c.a <= c.b);
    EXPECT_EQ(c.a == c.b, c.order == equal);
  }
}

TEST(Value, AsTheTypeOfAColumn) {
  const struct {
    Value from;
    FieldType type;
    Value to;
  } cases[] = {
      {"12", FieldType::Integer, 12},
      {12.0, FieldType::Integer, 12},
      {" -3", FieldType::Integer, -3},
      {"12,5", FieldType::Float, 12.5},
      {12, FieldType::Float, 12.0},
      {12.5, FieldType::Text, "12,5"},
      {may(1, 9), FieldType::Text, "01/05/2024 09:00:00"},
      {"01/05/2024 9:00", FieldType::DateTime, may(1, 9)},
      {"", FieldType::Text, ""},
      {Value(), FieldType::Integer, Value()},
      {Value(), FieldType::Blob, Value()},
      {picture({7}), FieldType::Blob, picture({7})},
  };
  for (const auto& c : cases) {
    const Value result = c.from.as(c.type);
    EXPECT_EQ(result, c.to);
    EXPECT_EQ(result.isInteger(), c.to.isInteger());
    EXPECT_EQ(result.isText(), c.to.isText());
  }

  const std::pair<Value, FieldType> refused[] = {{"", FieldType::Float},
                                                 {"12a", FieldType::Integer},
                                                 {"12,5", FieldType::Integer},
                                                 {12.5, FieldType::Integer},
                                                 {1e19, FieldType::Integer},
                                                 {"12/13/2024", FieldType::DateTime},
                                                 {5, FieldType::DateTime},
                                                 {may(1), FieldType::Float},
                                                 {may(1), FieldType::Integer},
                                                 {"x", FieldType::Blob},
                                                 {picture({1}), FieldType::Text},
                                                 {picture({1}), FieldType::Integer},
                                                 {picture({1}), FieldType::DateTime}};
  for (const auto& [from, type] : refused) EXPECT_THROW(from.as(type), ConversionError) << from.text();
  EXPECT_THROW(Value().toInteger(), ConversionError);
  EXPECT_THROW(Value().toFloat(), ConversionError);
  EXPECT_THROW(Value().toDateTime(), ConversionError);
  EXPECT_EQ(Value().text() + picture({65}).text(), "");
  EXPECT_TRUE(Value(SharedBytes()).isNull());
  EXPECT_EQ(Value().toBytes(), nullptr);
}

TEST(Value, ConversionErrorsNameTheText) {
  const auto messageOf = [](const Value& value) -> std::string {
    try {
      value.toFloat();
    } catch (const ConversionError& error) {
      return error.what();
    }
    return "(nothing thrown)";
  };
  EXPECT_EQ(messageOf("12a"), "« 12a » n'est pas un nombre.");
  EXPECT_EQ(messageOf(may(1)), "« 01/05/2024 » n'est pas un nombre.");
}

}  // namespace
}  // namespace tavoline
