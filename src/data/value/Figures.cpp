#include "data/value/Figures.h"

#include <algorithm>

#include "data/value/Text.h"

namespace tavoline {

bool isFigure(std::string_view text) {
  text = trimmed(text);
  if (text.ends_with(" DA")) text.remove_suffix(3);
  bool digit = false;
  for (const char letter : text) {
    digit |= isDigit(letter);
    if (!isDigit(letter) && std::string_view(" ,.-+/:%").find(letter) == std::string_view::npos) return false;
  }
  return digit;
}

}  // namespace tavoline
