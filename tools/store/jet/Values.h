#pragma once

#include <optional>
#include <string>

#include "tools/store/jet/JetFile.h"

namespace tavoline::tool::jet {

/// A text as the file stores it, UTF-16 packed where a mark of two bytes says so, in UTF-8.
struct StoredText {
  std::string text;
  bool mended = false;  ///< Half of a pair stood alone and became U+FFFD.
};
/// Nothing for bytes that are no such text.
std::optional<StoredText> textOf(Part bytes);

/// What is stored as days since the zero day, their fraction a time of day (which counts forward before the
/// zero day too), to the nearest millisecond. Nothing beyond the years 100 to 9999.
std::optional<DateTime> dateOf(double days);

/// An amount of ten-thousandths.
double currencyOf(std::int64_t stored);

/// A decimal of 17 bytes (its sign, then four words of four bytes, the highest first) with `scale` digits
/// behind the point, as the nearest float.
double decimalOf(Part bytes, int scale);

}  // namespace tavoline::tool::jet
