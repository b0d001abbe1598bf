#include "data/value/Folding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tavoline {
namespace {

/// Capitals `first` to `last`, `step` apart, lie `distance` before their small letters.
struct Range {
  char32_t first, last;
  std::uint8_t step;
  std::int32_t distance;
};

// Sorted by `first`; ranges do not overlap.
constexpr std::array kRanges = {
    Range{U'A', U'Z', 1, 32},
    Range{0x00B5, 0x00B5, 1, 0x03BC - 0x00B5},  // the micro sign is a mu
    Range{0x00C0, 0x00D6, 1, 32},
    Range{0x00D8, 0x00DE, 1, 32},
    Range{0x0100, 0x012E, 2, 1},
    Range{0x0132, 0x0136, 2, 1},
    Range{0x0139, 0x0147, 2, 1},
    Range{0x014A, 0x0176, 2, 1},
    Range{0x0178, 0x0178, 1, 0x00FF - 0x0178},
    Range{0x0179, 0x017D, 2, 1},
    Range{0x017F, 0x017F, 1, -0x010C},  // the long s
    Range{0x0386, 0x0386, 1, 0x03AC - 0x0386},
    Range{0x0388, 0x038A, 1, 37},
    Range{0x038C, 0x038C, 1, 64},
    Range{0x038E, 0x038F, 1, 63},
    Range{0x0391, 0x03A1, 1, 32},
    Range{0x03A3, 0x03AB, 1, 32},
    Range{0x03C2, 0x03C2, 1, 1},  // the final sigma
    Range{0x0400, 0x040F, 1, 80},
    Range{0x0410, 0x042F, 1, 32},
    Range{0x0460, 0x0480, 2, 1},
    Range{0x048A, 0x04BE, 2, 1},
    Range{0x04C0, 0x04C0, 1, 15},
    Range{0x04C1, 0x04CD, 2, 1},
    Range{0x04D0, 0x052E, 2, 1},
    Range{0x1E00, 0x1E94, 2, 1},
    Range{0x1E9E, 0x1E9E, 1, 0x00DF - 0x1E9E},  // the capital sharp s
    Range{0x1EA0, 0x1EFE, 2, 1},
};

/// Bytes that follow a lead byte; -1 for a byte that leads nothing.
int following(unsigned char lead) {
  if (lead < 0x80) return 0;
  if (lead >= 0xC2 && lead < 0xE0) return 1;
  if (lead >= 0xE0 && lead < 0xF0) return 2;
  if (lead >= 0xF0 && lead < 0xF5) return 3;
  return -1;
}

bool wellFormed(char32_t c, int bytes) {
  constexpr std::array<char32_t, 4> kSmallest = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = c >= 0xD800 && c < 0xE000;
  return c >= kSmallest[static_cast<std::size_t>(bytes)] && c < 0x110000 && !surrogate;
}

}  // namespace

char32_t decode(std::string_view utf8, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  const std::size_t start = at++;
  const unsigned char lead = byte(start);
  const int more = following(lead);
  if (more == 0) return lead;
  if (more < 0 || start + static_cast<std::size_t>(more) >= utf8.size()) return kIllFormed + lead;

  char32_t c = lead & (0x3F >> more);
  for (std::size_t i = start + 1; i <= start + static_cast<std::size_t>(more); ++i) {
    if ((byte(i) & 0xC0) != 0x80) return kIllFormed + lead;
    c = c << 6 | (byte(i) & 0x3F);
  }
  if (!wellFormed(c, more)) return kIllFormed + lead;
  at = start + static_cast<std::size_t>(more) + 1;
  return c;
}

void encode(char32_t c, std::string& utf8) {
  const auto put = [&](char32_t byte) { utf8 += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c >= kIllFormed) return put(c - kIllFormed);
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else {
    if (c < 0x10000) {
      put(0xE0 | c >> 12);
    } else {
      put(0xF0 | c >> 18);
      put(0x80 | (c >> 12 & 0x3F));
    }
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

char32_t foldCharacter(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 32 : c;
  const auto range = std::lower_bound(kRanges.begin(), kRanges.end(), c,
                                      [](const Range& r, char32_t wanted) { return r.last < wanted; });
  if (range == kRanges.end() || c < range->first || (c - range->first) % range->step != 0) return c;
  return static_cast<char32_t>(static_cast<std::int32_t>(c) + range->distance);
}

}  // namespace tavoline
