#include "data/store/Defaults.h"

#include <charconv>

namespace tavoline {

Value constantDefault(const std::string& text, FieldType type) {
  if (text.size() >= 2 && text.front() == '\'' && text.back() == '\'') {
    std::string value;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
      value += text[i];
      if (text[i] == '\'') ++i;
    }
    if (type == FieldType::DateTime)
      if (const auto date = DateTime::fromStored(value)) return *date;
    return value;
  }
  const char* const end = text.data() + text.size();
  double number = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return {};
  std::int64_t whole = 0;
  if (type == FieldType::Integer && std::from_chars(text.data(), end, whole).ptr == end) return whole;
  return number;
}

}  // namespace tavoline
