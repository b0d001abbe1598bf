#include "data/store/ConnectionString.h"

#include <algorithm>

#include "data/value/Text.h"

namespace tavoline {

namespace {

// Takes a value off the front of `rest`, with the semicolon that ends it. In quotes of either kind a value
// may hold semicolons, and the quote itself doubled.
std::string takeValue(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
  std::string value;
  if (!rest.empty() && (rest.front() == '"' || rest.front() == '\'')) {
    const char quote = rest.front();
    rest.remove_prefix(1);
    while (!rest.empty()) {
      const char c = rest.front();
      rest.remove_prefix(1);
      if (c == quote) {
        if (rest.empty() || rest.front() != quote) break;
        rest.remove_prefix(1);
      }
      value += c;
    }
    rest.remove_prefix(std::min(rest.find(';'), rest.size()));
  } else {
    const auto end = std::min(rest.find(';'), rest.size());
    value = trimmed(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  if (!rest.empty()) rest.remove_prefix(1);
  return value;
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  while (!text.empty()) {
    const auto mark = text.find_first_of("=;");
    if (mark == text.npos) break;
    const std::string_view key = trimmed(text.substr(0, mark));
    const bool hasValue = text[mark] == '=';
    text.remove_prefix(mark + 1);
    if (hasValue) parts_.emplace_back(key, takeValue(text));
  }
}

std::string ConnectionString::get(std::string_view key) const {
  for (const auto& [name, value] : parts_)
    if (sameName(name, key)) return value;
  return {};
}

}  // namespace tavoline
