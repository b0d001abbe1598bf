#pragma once

#include <string>
#include <string_view>

namespace tavoline {

/// Names of tables, columns and controls compare without regard to case (ASCII).
bool sameName(std::string_view a, std::string_view b);
std::string foldName(std::string_view name);

/// Unicode case folding of UTF-8 text, for `like`: É equals é. Accents count. Ill-formed bytes stand for
/// themselves.
std::string foldCase(std::string_view utf8);

inline bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Without the blanks, tabs and line ends at both sides.
std::string_view trimmed(std::string_view text);

/// Number of characters (code points) in UTF-8 text, as column widths count them.
std::size_t characterCount(std::string_view utf8);

/// Whether the bytes are well-formed UTF-8 throughout.
bool isUtf8(std::string_view bytes);

/// In single quotes, with the single quotes inside doubled: the way screens put a value into a filter.
std::string inQuotes(std::string_view text);
/// In single quotes as it stands, for a place where they are not doubled. What it holds never becomes part of
/// a statement or a filter: one with a single quote inside makes either of them unreadable, wherever it is
/// put between whole words.
std::string inBareQuotes(std::string_view text);
/// The sign that stands before such a text, which nothing can be read behind.
inline constexpr char kBrokenQuotes = '\x1A';

/// `like` with `%` for any run and `_` for any one character, without regard to case.
bool matchesLike(std::string_view text, std::string_view pattern);

}  // namespace tavoline
