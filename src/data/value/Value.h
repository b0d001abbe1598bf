#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "data/value/DateTime.h"

namespace tavoline {

using Bytes = std::vector<std::uint8_t>;
using SharedBytes = std::shared_ptr<const Bytes>;

/// What a column holds, and so what a text given to it is converted to.
enum class FieldType { Text, Integer, Float, DateTime, Blob };

/// One value of a field: null, whole number, float, text, date-time or bytes. Copies are cheap (bytes are
/// shared).
///
/// Arithmetic follows the rules of the trade's screens: a missing value gives a missing value, a text is read
/// as a number under the regional format (ConversionError if it is none), and nothing is ever rounded.
class Value {
 public:
  Value() = default;
  Value(int v) : v_(static_cast<std::int64_t>(v)) {}
  Value(std::int64_t v) : v_(v) {}
  Value(double v) : v_(v) {}
  Value(const char* v) : v_(std::string(v)) {}
  Value(std::string_view v) : v_(std::string(v)) {}
  Value(std::string v) : v_(std::move(v)) {}
  Value(DateTime v) : v_(v) {}
  Value(SharedBytes v);  ///< A null pointer gives the null value.
  Value(bool) = delete;

  bool isNull() const { return v_.index() == 0; }
  bool isInteger() const { return v_.index() == 1; }
  bool isFloat() const { return v_.index() == 2; }
  bool isNumber() const { return isInteger() || isFloat(); }
  bool isText() const { return v_.index() == 3; }
  bool isDateTime() const { return v_.index() == 4; }
  bool isBytes() const { return v_.index() == 5; }

  std::int64_t toInteger()
      const;  ///< Throws ConversionError on null, on text that is no whole number, on a fraction.
  double toFloat() const;       ///< Throws ConversionError on null and on text that is no number.
  DateTime toDateTime() const;  ///< Throws ConversionError on null and on text that is no date.
  SharedBytes toBytes() const;  ///< The null pointer on null; throws ConversionError on anything but bytes.
  std::string text() const;     ///< Display text under the regional format; empty for null and for bytes.

  /// The same value as `type`; null stays null. Text is read under the regional format. Throws
  /// ConversionError.
  Value as(FieldType type) const;

 private:
  std::variant<std::monostate, std::int64_t, double, std::string, DateTime, SharedBytes> v_;
};

Value operator+(const Value& a, const Value& b);
Value operator-(const Value& a, const Value& b);
Value operator*(const Value& a, const Value& b);
Value operator/(const Value& a,
                const Value& b);  ///< Always a float; throws ConversionError on division by zero.

/// Texts compare exactly, numbers by amount, a number with a text by the number in the text. Null equals only
/// null and is less than everything else.
bool operator==(const Value& a, const Value& b);
std::partial_ordering operator<=>(const Value& a, const Value& b);

}  // namespace tavoline
