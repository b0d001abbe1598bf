#include "data/sql/Lexer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "data/sql/Refusal.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
/// Every byte of a letter beyond ASCII counts as a letter: é, ç and their like stand in names.
bool startsWord(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool continuesWord(char c) {
  return startsWord(c) || isDigit(c);
}

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  std::vector<Token> all() {
    std::vector<Token> result;
    do {
      result.push_back(next());
    } while (result.back().kind != TokenKind::End);
    return result;
  }

 private:
  char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  Token next() {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    Token token;
    token.at = at_;
    if (at_ < text_.size()) read(token);
    token.end = at_;
    return token;
  }

  void read(Token& token) {
    const char c = text_[at_];
    if (c == kBrokenQuotes) fault(text_.substr(0, at_), token, "un texte sans apostrophe");
    if (c == '\'' || c == '"') return readText(token, c);
    if (c == '[') return readName(token);
    if (c == ':') return readParameter(token);
    if (isDigit(c) || (c == '.' && isDigit(at(at_ + 1)))) return readNumber(token);
    if (startsWord(c)) {
      token.kind = TokenKind::Word;
      token.text = word();
      return;
    }
    readSymbol(token);
  }

  std::string word() {
    const std::size_t start = at_;
    while (at_ < text_.size() && continuesWord(text_[at_])) ++at_;
    return std::string(text_.substr(start, at_ - start));
  }

  void readText(Token& token, char quote) {
    token.kind = TokenKind::Text;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == quote) {
        ++at_;
        if (at(at_) != quote) return;
      }
      token.text += text_[at_];
    }
    fault(text_, token, "la fin d'un texte entre guillemets");
  }

  void readName(Token& token) {
    token.kind = TokenKind::Name;
    const std::size_t close = text_.find(']', at_);
    if (close == std::string_view::npos || close == at_ + 1) fault(text_, token, "un nom entre crochets");
    token.text = std::string(text_.substr(at_ + 1, close - at_ - 1));
    at_ = close + 1;
  }

  void readParameter(Token& token) {
    token.kind = TokenKind::Parameter;
    ++at_;
    if (!continuesWord(at(at_))) fault(text_, token, "un nom de paramètre après « : »");
    token.text = word();
  }

  void readNumber(Token& token) {
    token.kind = TokenKind::Number;
    const std::size_t start = at_;
    while (isDigit(at(at_))) ++at_;
    bool whole = true;
    if (at(at_) == '.') {
      whole = false;
      ++at_;
      while (isDigit(at(at_))) ++at_;
    }
    const std::string_view digits = text_.substr(start, at_ - start);
    token.text = std::string(digits);
    std::int64_t integer = 0;
    double real = 0;
    const char* end = digits.data() + digits.size();
    if (whole && std::from_chars(digits.data(), end, integer).ec == std::errc()) {
      token.number = integer;
    } else if (std::from_chars(digits.data(), end, real).ec == std::errc()) {
      token.number = real;
    } else {
      fault(text_, token, "un nombre moins grand");
    }
  }

  void readSymbol(Token& token) {
    constexpr std::array<std::string_view, 16> kSymbols = {"<>", "<=", ">=", "=", "<", ">", "+", "-",
                                                           "*",  "/",  "(",  ")", ",", ".", ";", "!="};
    for (const std::string_view symbol : kSymbols) {
      if (text_.substr(at_, symbol.size()) != symbol) continue;
      token.kind = TokenKind::Symbol;
      token.text = symbol == "!=" ? "<>" : symbol;
      at_ += symbol.size();
      return;
    }
    fault(text_, token, "un signe connu");
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<Token> tokens(std::string_view text) {
  return Lexer(text).all();
}

std::vector<std::string> parametersIn(std::string_view text) try {
  std::vector<std::string> names;
  for (Token& token : tokens(text)) {
    const auto same = [&](const std::string& name) { return sameName(name, token.text); };
    if (token.kind == TokenKind::Parameter && std::ranges::none_of(names, same))
      names.push_back(std::move(token.text));
  }
  return names;
} catch (const StatementError&) {
  return {};
}

void fault(std::string_view text, const Token& token, std::string_view wanted) {
  constexpr std::size_t kShown = 30;
  constexpr std::size_t kWhole = 120;  // a filter is shown in full, a long statement by its place only
  const std::string place = std::to_string(characterCount(text.substr(0, token.at)) + 1);
  std::string_view rest = text.substr(std::min(token.at, text.size()));
  if (rest.size() > kShown) {
    std::size_t length = kShown;
    while (length > 0 && (static_cast<unsigned char>(rest[length]) & 0xC0) == 0x80) --length;
    rest = rest.substr(0, length);
  }
  const std::string seen = rest.empty() ? "à la fin" : "devant « " + std::string(rest) + " »";
  const std::string whole = text.size() > kWhole ? "" : " dans « " + std::string(text) + " »";
  refuse("Il manque " + std::string(wanted) + " " + seen + " (caractère " + place + ")" + whole + ".");
}

}  // namespace tavoline::sql
