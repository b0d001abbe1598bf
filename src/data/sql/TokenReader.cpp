#include "data/sql/TokenReader.h"

#include <algorithm>
#include <array>

#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

struct Comparison {
  std::string_view sign;
  Op op;
};
constexpr std::array<Comparison, 6> kComparisons = {{{"=", Op::Equal},
                                                     {"<>", Op::NotEqual},
                                                     {"<", Op::Less},
                                                     {"<=", Op::LessEqual},
                                                     {">", Op::Greater},
                                                     {">=", Op::GreaterEqual}}};

}  // namespace

const Token& TokenReader::peek(std::size_t ahead) const {
  return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& TokenReader::take() {
  const Token& token = peek();
  if (!atEnd()) ++at_;
  return token;
}

bool TokenReader::isWord(std::string_view word, std::size_t ahead) const {
  return peek(ahead).kind == TokenKind::Word && sameName(peek(ahead).text, word);
}

bool TokenReader::isSymbol(std::string_view symbol, std::size_t ahead) const {
  return peek(ahead).kind == TokenKind::Symbol && peek(ahead).text == symbol;
}

bool TokenReader::takeWord(std::string_view word) {
  const bool found = isWord(word);
  if (found) take();
  return found;
}

bool TokenReader::takeSymbol(std::string_view symbol) {
  const bool found = isSymbol(symbol);
  if (found) take();
  return found;
}

void TokenReader::needWord(std::string_view word) {
  if (!takeWord(word)) fail("« " + std::string(word) + " »");
}

void TokenReader::needSymbol(std::string_view symbol) {
  if (!takeSymbol(symbol)) fail("« " + std::string(symbol) + " »");
}

std::string TokenReader::name(std::string_view wanted) {
  if (peek().kind != TokenKind::Word && peek().kind != TokenKind::Name) fail(wanted);
  return take().text;
}

std::optional<Op> TokenReader::comparison(std::size_t ahead) const {
  for (const Comparison& candidate : kComparisons) {
    if (isSymbol(candidate.sign, ahead)) return candidate.op;
  }
  return std::nullopt;
}

}  // namespace tavoline::sql
