// Numbers as text and back, under the regional format.

#include <algorithm>
#include <charconv>
#include <cmath>

#include "data/value/Errors.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"

namespace tavoline {
namespace {

constexpr int kSignificantDigits = 15;

/// A number as its decimal digits: 0.d1d2d3... times ten to the power of `point`. Zero has no digits.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

template <class Float>
Decimal decimalOf(Float v) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, std::fabs(v), std::chars_format::scientific,
                                 kSignificantDigits - 1)
                       .ptr;
  const std::string_view all(text, static_cast<std::size_t>(end - text));
  const auto e = all.find('e');
  Decimal decimal;
  decimal.digits = std::string(1, all[0]) + std::string(all.substr(2, e - 2));
  decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
  const std::size_t sign = all[e + 1] == '+' ? 1 : 0;  // which the reader of numbers does not know
  std::from_chars(text + e + 1 + sign, end, decimal.point);
  ++decimal.point;
  decimal.negative = v < 0;
  if (decimal.digits.empty()) decimal.point = 0;
  return decimal;
}

/// Cuts to `places` decimals, half away from zero, on the digits that are seen.
void roundTo(Decimal& d, int places) {
  const int keep = d.point + places;
  if (keep >= static_cast<int>(d.digits.size())) return;
  const bool up = keep >= 0 && d.digits[static_cast<std::size_t>(keep)] >= '5';
  d.digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
  if (up) {
    std::size_t at = d.digits.size();
    while (at > 0 && d.digits[at - 1] == '9') d.digits[--at] = '0';
    if (at > 0) {
      ++d.digits[at - 1];
    } else {
      d.digits.insert(d.digits.begin(), '1');
      ++d.point;
    }
  }
  d.digits.erase(d.digits.find_last_not_of('0') + 1);
  if (d.digits.empty()) d = Decimal{};
}

/// At least `whole` digits before the mark and `least` after it.
std::string fixedText(const Decimal& d, std::size_t whole, std::size_t least) {
  std::string front, back;
  for (int i = 0; i < d.point; ++i) {
    const auto at = static_cast<std::size_t>(i);
    front += at < d.digits.size() ? d.digits[at] : '0';
  }
  back.assign(d.point < 0 ? static_cast<std::size_t>(-d.point) : 0, '0');
  if (d.digits.size() > front.size()) back += d.digits.substr(front.size());
  if (d.digits.empty()) back.clear();
  if (front.size() < whole) front.insert(0, whole - front.size(), '0');
  if (back.size() < least) back.append(least - back.size(), '0');
  std::string text = d.negative ? "-" : "";
  text += front;
  if (!back.empty()) text += RegionalFormat::current().decimal + back;
  return text;
}

std::string scientificText(const Decimal& d) {
  std::string text = d.negative ? "-" : "";
  text += d.digits[0];
  if (d.digits.size() > 1) text += RegionalFormat::current().decimal + d.digits.substr(1);
  return text + 'E' + std::to_string(d.point - 1);
}

template <class Float>
std::string notFinite(Float v) {
  return std::isnan(v) ? "non défini" : v > 0 ? "infini" : "-infini";
}

/// "%2.2f" and its kin: the least width of the whole text, and the decimals.
std::string formatPercent(std::string_view pattern, double v) {
  std::size_t at = 1, width = 0, places = 2;
  while (at < pattern.size() && pattern[at] >= '0' && pattern[at] <= '9' && width < 100)
    width = width * 10 + static_cast<std::size_t>(pattern[at++] - '0');
  if (at < pattern.size() && pattern[at] == '.') {
    places = 0;
    while (++at < pattern.size() && pattern[at] >= '0' && pattern[at] <= '9' && places < 100)
      places = places * 10 + static_cast<std::size_t>(pattern[at] - '0');
  }
  const char kind = at < pattern.size() ? pattern[at] : '\0';
  if (kind != 'f' && kind != 'n' && kind != 'd') return formatFloat(v);
  if (kind == 'd') places = 0;
  Decimal decimal = decimalOf(v);
  roundTo(decimal, static_cast<int>(places));
  std::string text = fixedText(decimal, 1, places);
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

[[noreturn]] void notANumber(std::string_view text, const char* what) {
  throw ConversionError("« " + std::string(text) + " » n'est pas un nombre" + what + ".");
}

std::size_t skipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

/// Blanks between two digits group thousands, as the region writes them: an ordinary one, one that does not
/// break, or a narrow one.
std::string withoutGrouping(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t blanks = 0;
    for (const std::string_view blank : {" ", "\u00a0", "\u202f"})
      if (text.substr(at).starts_with(blank)) blanks = blank.size();
    const bool between = blanks > 0 && at > 0 && isDigit(text[at - 1]) && at + blanks < text.size() &&
                         isDigit(text[at + blanks]);
    if (between) {
      at += blanks;
    } else {
      plain += text[at++];
    }
  }
  return plain;
}

/// The length of the decimal mark at `at`; 0 if none is there.
std::size_t decimalMarkAt(std::string_view text, std::size_t at, DecimalMark allowed) {
  const RegionalFormat& region = RegionalFormat::current();
  if (!region.decimal.empty() && text.substr(at).starts_with(region.decimal)) return region.decimal.size();
  if (allowed == DecimalMark::RegionalOnly || at >= text.size() || (text[at] != ',' && text[at] != '.'))
    return 0;
  const bool groups = region.grouping == text.substr(at, 1) && skipDigits(text, at + 1) - at == 4;
  return groups ? 0 : 1;
}

/// The number with a point for its decimal mark, as the machine reads it; empty if the text is no number.
std::string machineText(std::string_view text, DecimalMark mark) {
  std::string result;
  std::size_t at = 0;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
    if (text[at] == '-') result = "-";
    ++at;
  }
  const std::size_t whole = at;
  at = skipDigits(text, at);
  std::size_t count = at - whole;
  result += count > 0 ? text.substr(whole, count) : "0";
  if (const std::size_t markLength = decimalMarkAt(text, at, mark); markLength > 0) {
    const std::size_t start = at + markLength;
    at = skipDigits(text, start);
    count += at - start;
    if (at > start) result += "." + std::string(text.substr(start, at - start));
  }
  if (count == 0) return {};
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t start = at + 1;
    if (start < text.size() && (text[start] == '-' || text[start] == '+')) ++start;
    const std::size_t end = skipDigits(text, start);
    if (end == start) return {};
    result += 'e';
    if (text[at + 1] == '-') result += '-';
    result += text.substr(start, end - start);
    at = end;
  }
  return at == text.size() ? result : std::string();
}

template <class Float>
std::string shortestText(Float v) {
  if (!std::isfinite(v)) return notFinite(v);
  const Decimal decimal = decimalOf(v);
  const bool fixed = decimal.digits.empty() || (decimal.point > -5 && decimal.point <= kSignificantDigits);
  return fixed ? fixedText(decimal, 1, 0) : scientificText(decimal);
}

template <class Float>
Float readNumber(std::string_view text, DecimalMark mark) {
  const std::string machine = machineText(withoutGrouping(trimmed(text)), mark);
  Float value = 0;
  const auto [end, error] = std::from_chars(machine.data(), machine.data() + machine.size(), value);
  if (machine.empty() || error != std::errc() || end != machine.data() + machine.size()) notANumber(text, "");
  return value;
}

}  // namespace

std::string formatFloat(double v) {
  return shortestText(v);
}

std::string formatFloat(long double v) {
  return shortestText(v);
}

std::string formatPattern(std::string_view pattern, double v) {
  if (!std::isfinite(v)) return notFinite(v);
  if (pattern.empty()) return formatFloat(v);
  if (pattern.front() == '%') return formatPercent(pattern, v);
  const auto first = pattern.find_first_of("0#.");
  if (first == std::string_view::npos) return std::string(pattern);
  const auto last = pattern.find_last_of("0#.");
  const std::string_view number = pattern.substr(first, last - first + 1);
  const auto point = std::min(number.find('.'), number.size());
  const std::string_view back = number.substr(std::min(point + 1, number.size()));
  const auto zeros = [](std::string_view part) {
    return static_cast<std::size_t>(std::count(part.begin(), part.end(), '0'));
  };
  Decimal decimal = decimalOf(v);
  roundTo(decimal, static_cast<int>(back.size()));
  return std::string(pattern.substr(0, first)) +
         fixedText(decimal, zeros(number.substr(0, point)), zeros(back)) +
         std::string(pattern.substr(last + 1));
}

std::int64_t readInteger(std::string_view text) {
  const std::string digits = withoutGrouping(trimmed(text));
  std::string_view body = digits;
  if (!body.empty() && body.front() == '+' && body.size() > 1 && isDigit(body[1])) body.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(body.data(), body.data() + body.size(), value);
  if (body.empty() || error != std::errc() || end != body.data() + body.size()) notANumber(text, " entier");
  return value;
}

double readFloat(std::string_view text, DecimalMark mark) {
  return readNumber<double>(text, mark);
}

long double readExtended(std::string_view text, DecimalMark mark) {
  return readNumber<long double>(text, mark);
}

}  // namespace tavoline
