#include "data/store/postgres/Bound.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "data/value/Errors.h"
#include "data/value/Folding.h"

namespace tavoline::postgres {

namespace {

void requireKeepable(const Address& address, const std::string& text) {
  for (std::size_t at = 0; at < text.size();)
    if (const char32_t c = decode(text, at); c == 0 || c >= kIllFormed)
      throw StoreError("Le texte saisi contient un signe illisible, que le serveur des données " +
                       address.place + " ne garde pas. Effacez-le et saisissez-le de nouveau.");
}

}  // namespace

std::optional<std::string> asText(const Address& address, const Value& value) {
  if (value.isInteger()) return std::to_string(value.toInteger());
  if (value.isDateTime()) return value.toDateTime().stored();
  if (value.isFloat() && !std::isnan(value.toFloat())) {
    std::array<char, 40> digits{};
    std::snprintf(digits.data(), digits.size(), "%.17g", value.toFloat());
    return digits.data();
  }
  if (!value.isText()) return std::nullopt;
  std::string text = value.text();
  requireKeepable(address, text);
  return text;
}

Bound::Bound(const Address& address, const std::vector<Value>& values) {
  static constexpr char nothing[] = "";
  texts_.reserve(values.size());
  for (const Value& value : values) {
    const SharedBytes bytes = value.isBytes() ? value.toBytes() : nullptr;
    const auto text = asText(address, value);
    bytes_.push_back(bytes);
    texts_.push_back(text.value_or(""));
    if (bytes)
      pointers_.push_back(bytes->empty() ? nothing : reinterpret_cast<const char*>(bytes->data()));
    else
      pointers_.push_back(text ? texts_.back().c_str() : nullptr);
    lengths_.push_back(bytes ? static_cast<int>(bytes->size()) : 0);
    formats_.push_back(bytes ? 1 : 0);
  }
}

}  // namespace tavoline::postgres
