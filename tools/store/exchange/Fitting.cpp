#include "tools/store/exchange/Fitting.h"

#include <charconv>
#include <cmath>

#include "data/value/Text.h"

namespace tavoline::tool {
namespace {

template <typename Number>
std::optional<Number> exact(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string quoted(const schema::Column& column) {
  return "« " + std::string(column.name) + " »";
}

std::optional<std::string> another(const schema::Column& column, const Value& value,
                                   const std::string& kind) {
  return quoted(column) +
         (value.isBytes() ? " tient des octets au lieu d'" : " vaut « " + value.text() + " » au lieu d'") +
         kind;
}

std::optional<std::string> fitText(Value& value, const schema::Column& column) {
  if (value.isInteger())
    value = std::to_string(value.toInteger());
  else if (value.isFloat())
    value = exactText(value.toFloat());
  else if (!value.isText())
    return another(column, value, "un texte");
  const std::string text = value.text();
  if (text.find('\0') != text.npos) return quoted(column) + " tient un caractère nul";
  const std::size_t characters = characterCount(text);
  if (column.width && characters > static_cast<std::size_t>(column.width))
    return quoted(column) + " a " + std::to_string(characters) + " caractères, pour " +
           std::to_string(column.width) + " au plus";
  return std::nullopt;
}

std::optional<std::string> fitInteger(Value& value, const schema::Column& column) {
  constexpr double kExact = 9007199254740992.0;  // beyond it not every whole number is a float
  if (value.isInteger()) return std::nullopt;
  if (value.isText()) {
    if (const auto number = exactInteger(trimmed(value.text()))) return value = *number, std::nullopt;
  } else if (value.isFloat()) {
    const double number = value.toFloat();
    if (std::abs(number) <= kExact && number == std::trunc(number))
      return value = static_cast<std::int64_t>(number), std::nullopt;
  }
  return another(column, value, "un nombre entier");
}

std::optional<std::string> fitFloat(Value& value, const schema::Column& column) {
  if (value.isInteger())
    value = static_cast<double>(value.toInteger());
  else if (value.isText())
    if (const auto number = exactNumber(trimmed(value.text()))) value = *number;
  if (!value.isFloat() || std::isnan(value.toFloat())) return another(column, value, "un nombre");
  return std::nullopt;
}

std::optional<std::string> fitDate(Value& value, const schema::Column& column) {
  if (value.isText())
    if (const auto date = DateTime::fromStored(value.text())) value = *date;
  if (!value.isDateTime()) return another(column, value, "une date");
  return std::nullopt;
}

}  // namespace

std::optional<std::string> fit(Value& value, const schema::Column& column) {
  if (value.isNull()) return std::nullopt;
  switch (column.type) {
    case FieldType::Text:
      return fitText(value, column);
    case FieldType::Integer:
      return fitInteger(value, column);
    case FieldType::Float:
      return fitFloat(value, column);
    case FieldType::DateTime:
      return fitDate(value, column);
    case FieldType::Blob:
      if (!value.isBytes()) return another(column, value, "une image");
  }
  return std::nullopt;
}

Value defaultOf(const schema::Column& column) {
  if (column.defaultValue.empty()) return {};
  Value value(column.defaultValue);
  fit(value, column);
  return value;
}

std::string exactText(double number) {
  char digits[64];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
  return {digits, end};
}

std::optional<double> exactNumber(std::string_view text) {
  return exact<double>(text);
}

std::optional<std::int64_t> exactInteger(std::string_view text) {
  return exact<std::int64_t>(text);
}

}  // namespace tavoline::tool
