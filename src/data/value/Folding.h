#pragma once

#include <string>
#include <string_view>

namespace tavoline {

/// The character of UTF-8 text at byte `at`, which moves on behind it. A byte that belongs to no well-formed
/// character gives itself plus kIllFormed, so that texts which are no UTF-8 still compare byte for byte.
char32_t decode(std::string_view utf8, std::size_t& at);
inline constexpr char32_t kIllFormed = 0x110000;

/// Appends what `decode` gave.
void encode(char32_t character, std::string& utf8);

/// Simple case folding of the Latin, Greek and Cyrillic letters; every other character stands for itself.
char32_t foldCharacter(char32_t c);

}  // namespace tavoline
