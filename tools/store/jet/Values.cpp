#include "tools/store/jet/Values.h"

#include <charconv>
#include <cmath>

#include "data/value/Folding.h"

namespace tavoline::tool::jet {
namespace {

constexpr std::uint16_t kPacked = 0xFEFF;
constexpr char32_t kReplacement = 0xFFFD;

/// Joins the halves of pairs.
class Utf16 {
 public:
  void add(std::uint16_t unit) {
    const bool high = unit >= 0xD800 && unit < 0xDC00, low = unit >= 0xDC00 && unit < 0xE000;
    if (low && high_) {
      encode(0x10000 + ((*high_ - 0xD800U) << 10) + (unit - 0xDC00U), text_.text);
      high_.reset();
      return;
    }
    endPair();
    if (high)
      high_ = unit;
    else if (low)
      mend();
    else
      encode(unit, text_.text);
  }
  StoredText text() {
    endPair();
    return std::move(text_);
  }

 private:
  void endPair() {
    if (high_) mend();
    high_.reset();
  }
  void mend() {
    encode(kReplacement, text_.text);
    text_.mended = true;
  }

  StoredText text_;
  std::optional<std::uint16_t> high_;
};

// Behind the mark each byte is a character of its own; a byte of zero changes to pairs of bytes, and back.
std::optional<StoredText> unpacked(Part bytes) {
  Utf16 text;
  bool packed = true;
  for (std::size_t i = 0; i < bytes.size();) {
    if (packed) {
      if (bytes[i] == 0)
        packed = false;
      else
        text.add(bytes[i]);
      ++i;
    } else if (bytes[i] == 0) {
      packed = true;
      ++i;
    } else {
      if (i + 1 == bytes.size()) return std::nullopt;
      text.add(wordAt(bytes, i));
      i += 2;
    }
  }
  return text.text();
}

double nearest(const std::string& digits) {
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

}  // namespace

std::optional<StoredText> textOf(Part bytes) {
  if (bytes.size() >= 2 && wordAt(bytes, 0) == kPacked) return unpacked(bytes.subspan(2));
  if (bytes.size() % 2 != 0) return std::nullopt;
  Utf16 text;
  for (std::size_t i = 0; i < bytes.size(); i += 2) text.add(wordAt(bytes, i));
  return text.text();
}

std::optional<DateTime> dateOf(double days) {
  constexpr double kMillis = kMillisecondsPerDay, kMostDays = 3'000'000;
  if (!(std::abs(days) < kMostDays)) return std::nullopt;
  double whole = 0;
  const double fraction = std::abs(std::modf(days, &whole));
  const DateTime date = DateTime::fromMillis(static_cast<std::int64_t>(whole) * kMillisecondsPerDay +
                                             std::llround(fraction * kMillis));
  if (date.year() < 100 || date.year() > 9999) return std::nullopt;
  return date;
}

double currencyOf(std::int64_t stored) {
  constexpr std::int64_t kExact = std::int64_t{1} << 53;
  if (stored > -kExact && stored < kExact) return static_cast<double>(stored) / 10000;
  return nearest(std::to_string(stored) + "e-4");
}

double decimalOf(Part bytes, int scale) {
  std::array<std::uint32_t, 4> words = {};  // the highest first
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = longAt(bytes, 1 + 4 * i);
  std::string digits;
  while (words != std::array<std::uint32_t, 4>{}) {
    std::uint64_t rest = 0;
    for (std::uint32_t& word : words) {
      rest = rest << 32 | word;
      word = static_cast<std::uint32_t>(rest / 10);
      rest %= 10;
    }
    digits.insert(digits.begin(), static_cast<char>('0' + rest));
  }
  if (digits.empty()) return 0;
  const double number = nearest(digits + "e-" + std::to_string(scale));
  return bytes[0] & 0x80 ? -number : number;
}

}  // namespace tavoline::tool::jet
