#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/sql/Ast.h"
#include "data/sql/Lexer.h"

namespace tavoline::sql {

/// Goes through the tokens of a text. `is...` looks, `take...` moves on if it is there, `need...` throws if
/// it is not.
class TokenReader {
 public:
  explicit TokenReader(std::string_view text) : text_(text), tokens_(tokens(text)) {}

  const Token& peek(std::size_t ahead = 0) const;  ///< The closing End when there are no more.
  const Token& take();
  bool atEnd() const { return peek().kind == TokenKind::End; }

  bool isWord(std::string_view word, std::size_t ahead = 0) const;
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool takeWord(std::string_view word);
  bool takeSymbol(std::string_view symbol);
  void needWord(std::string_view word);
  void needSymbol(std::string_view symbol);

  /// A name where nothing else fits, so that keywords are names too.
  std::string name(std::string_view wanted);
  std::optional<Op> comparison(std::size_t ahead = 0) const;

  /// Throws StatementError: what was wanted at this place.
  [[noreturn]] void fail(std::string_view wanted) const { fault(text_, peek(), wanted); }

 private:
  std::string_view text_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
};

}  // namespace tavoline::sql
