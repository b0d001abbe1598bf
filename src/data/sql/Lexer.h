#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::sql {

/// A word is a name or a keyword: which of the two is for the place to say. A name is a word in brackets.
enum class TokenKind { Word, Name, Text, Number, Parameter, Symbol, End };

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;     ///< The word, the name without brackets, the text without quotes, the symbol.
  Value number;         ///< Of a Number only; whole where it is written so.
  std::size_t at = 0;   ///< Byte where the token starts.
  std::size_t end = 0;  ///< Byte behind it.
};

/// Cuts a statement or a filter into tokens; the last one is End. Blanks and line ends mean nothing, and
/// neither does their absence wherever two tokens are told apart by their characters. Throws StatementError.
std::vector<Token> tokens(std::string_view text);

/// The names of the parameters in a statement, each once, in order of appearance. The text may be unfit to
/// run: one that cannot be cut has none.
std::vector<std::string> parametersIn(std::string_view text);

/// Throws StatementError: what was wanted, and the place in `text` (which is what the token was cut from).
[[noreturn]] void fault(std::string_view text, const Token& token, std::string_view wanted);

}  // namespace tavoline::sql
