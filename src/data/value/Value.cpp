#include "data/value/Value.h"

#include <cmath>
#include <optional>

#include "data/value/Errors.h"
#include "data/value/Regional.h"

namespace tavoline {
namespace {

constexpr double kDay = kMillisecondsPerDay;
constexpr double kFurthest = 10000 * 366.0 * kDay;  // no calendar date lies further from the zero day

[[noreturn]] void notNumber(const std::string& what) {
  throw ConversionError("« " + what + " » n'est pas un nombre.");
}

[[noreturn]] void missing(const char* wanted) {
  throw ConversionError(std::string("Une valeur manque là où il faut ") + wanted + ".");
}

std::int64_t wholeOf(double v) {
  constexpr double kLimit = 9223372036854775808.0;
  if (std::nearbyint(v) != v || v < -kLimit || v >= kLimit)
    throw ConversionError("« " + formatFloat(v) + " » n'est pas un nombre entier.");
  return static_cast<std::int64_t>(v);
}

/// A text as the number that it spells, whole where it can be.
std::optional<Value> numberIn(const std::string& text) {
  try {
    return Value(readInteger(text));
  } catch (const ConversionError&) {
  }
  try {
    return Value(readFloat(text));
  } catch (const ConversionError&) {
    return std::nullopt;
  }
}

/// The operand of an arithmetic operation: a number or a date-time.
Value operand(const Value& v) {
  if (v.isNumber() || v.isDateTime()) return v;
  const std::string text = v.text();
  if (v.isBytes()) throw ConversionError("Une image n'est pas un nombre.");
  const auto number = numberIn(text);
  if (!number) notNumber(text);
  return *number;
}

/// The operand of an operation that takes no date-time.
Value number(const Value& v) {
  Value result = operand(v);
  if (result.isDateTime()) notNumber(result.text());
  return result;
}

DateTime moved(DateTime date, double millis) {
  const double target = static_cast<double>(date.millis()) + millis;
  if (!(std::fabs(target) < kFurthest)) throw ConversionError("Cette date sort du calendrier.");
  return DateTime::fromMillis(std::llround(target));
}

template <class Whole, class Float>
Value arithmetic(const Value& a, const Value& b, Whole whole, Float fraction) {
  std::int64_t result = 0;
  if (a.isInteger() && b.isInteger() && !whole(a.toInteger(), b.toInteger(), &result)) return result;
  return fraction(a.toFloat(), b.toFloat());
}

std::partial_ordering compareNumbers(const Value& a, const Value& b) {
  if (a.isInteger() && b.isInteger()) return a.toInteger() <=> b.toInteger();
  const auto wide = [](const Value& v) {
    return v.isInteger() ? static_cast<long double>(v.toInteger()) : static_cast<long double>(v.toFloat());
  };
  return wide(a) <=> wide(b);
}

std::partial_ordering reversed(std::partial_ordering order) {
  if (std::is_lt(order)) return std::partial_ordering::greater;
  return std::is_gt(order) ? std::partial_ordering::less : order;
}

/// A text against a number or a date-time, by what the text says; unordered if it says neither.
std::partial_ordering compareText(const std::string& text, const Value& other) {
  if (other.isNumber()) {
    const auto number = numberIn(text);
    return number ? compareNumbers(*number, other) : std::partial_ordering::unordered;
  }
  if (!other.isDateTime()) return std::partial_ordering::unordered;
  try {
    return readDateTime(text) <=> other.toDateTime();
  } catch (const ConversionError&) {
    return std::partial_ordering::unordered;
  }
}

}  // namespace

Value::Value(SharedBytes v) {
  if (v) v_ = std::move(v);
}

std::int64_t Value::toInteger() const {
  if (isInteger()) return std::get<std::int64_t>(v_);
  if (isFloat()) return wholeOf(std::get<double>(v_));
  if (isText()) return readInteger(std::get<std::string>(v_));
  if (isNull()) missing("un nombre entier");
  if (isBytes()) throw ConversionError("Une image n'est pas un nombre.");
  notNumber(text());
}

double Value::toFloat() const {
  if (isInteger()) return static_cast<double>(std::get<std::int64_t>(v_));
  if (isFloat()) return std::get<double>(v_);
  if (isText()) return readFloat(std::get<std::string>(v_));
  if (isNull()) missing("un nombre");
  if (isBytes()) throw ConversionError("Une image n'est pas un nombre.");
  notNumber(text());
}

DateTime Value::toDateTime() const {
  if (isDateTime()) return std::get<DateTime>(v_);
  if (isText()) return readDateTime(std::get<std::string>(v_));
  if (isNull()) missing("une date");
  if (isBytes()) throw ConversionError("Une image n'est pas une date.");
  throw ConversionError("« " + text() + " » n'est pas une date.");
}

SharedBytes Value::toBytes() const {
  if (isNull()) return nullptr;
  if (isBytes()) return std::get<SharedBytes>(v_);
  throw ConversionError("« " + text() + " » n'est pas une image.");
}

std::string Value::text() const {
  if (isInteger()) return std::to_string(std::get<std::int64_t>(v_));
  if (isFloat()) return formatFloat(std::get<double>(v_));
  if (isText()) return std::get<std::string>(v_);
  if (isDateTime()) return formatDateTime(std::get<DateTime>(v_));
  return {};
}

Value Value::as(FieldType type) const {
  if (isNull()) return {};
  switch (type) {
    case FieldType::Integer:
      return toInteger();
    case FieldType::Float:
      return toFloat();
    case FieldType::DateTime:
      return toDateTime();
    case FieldType::Blob:
      return toBytes();
    case FieldType::Text:
      break;
  }
  if (isBytes()) throw ConversionError("Une image n'est pas un texte.");
  return text();
}

Value operator+(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return {};
  const Value x = operand(a), y = operand(b);
  if (x.isDateTime() && y.isDateTime())
    return moved(x.toDateTime(), static_cast<double>(y.toDateTime().millis()));
  if (x.isDateTime()) return moved(x.toDateTime(), y.toFloat() * kDay);
  if (y.isDateTime()) return moved(y.toDateTime(), x.toFloat() * kDay);
  return arithmetic(
      x, y, [](auto l, auto r, auto* out) { return __builtin_add_overflow(l, r, out); },
      [](double l, double r) { return l + r; });
}

Value operator-(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return {};
  const Value x = operand(a), y = operand(b);
  if (x.isDateTime() && y.isDateTime())
    return static_cast<double>(x.toDateTime().millis() - y.toDateTime().millis()) / kDay;
  if (x.isDateTime()) return moved(x.toDateTime(), -y.toFloat() * kDay);
  if (y.isDateTime()) notNumber(y.text());
  return arithmetic(
      x, y, [](auto l, auto r, auto* out) { return __builtin_sub_overflow(l, r, out); },
      [](double l, double r) { return l - r; });
}

Value operator*(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return {};
  return arithmetic(
      number(a), number(b), [](auto l, auto r, auto* out) { return __builtin_mul_overflow(l, r, out); },
      [](double l, double r) { return l * r; });
}

Value operator/(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return {};
  const double dividend = number(a).toFloat(), divisor = number(b).toFloat();
  if (divisor == 0) throw ConversionError("Division de « " + a.text() + " » par zéro.");
  return dividend / divisor;
}

bool operator==(const Value& a, const Value& b) {
  return std::is_eq(a <=> b);
}

std::partial_ordering operator<=>(const Value& a, const Value& b) {
  if (a.isNull() || b.isNull()) return b.isNull() <=> a.isNull();
  if (a.isText() && b.isText()) return a.text() <=> b.text();
  if (a.isNumber() && b.isNumber()) return compareNumbers(a, b);
  if (a.isDateTime() && b.isDateTime()) return a.toDateTime() <=> b.toDateTime();
  if (a.isBytes() && b.isBytes()) return *a.toBytes() <=> *b.toBytes();
  if (a.isText()) return compareText(a.text(), b);
  if (b.isText()) return reversed(compareText(b.text(), a));
  return std::partial_ordering::unordered;
}

}  // namespace tavoline
