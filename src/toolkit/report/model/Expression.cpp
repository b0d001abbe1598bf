#include "toolkit/report/model/Expression.h"

#include <optional>

namespace tavoline::report {

namespace {

bool isWordCharacter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         byte >= 0x80;
}

// One expression, read from left to right; every step gives nothing as soon as the form is left.
class ExpressionReader {
 public:
  explicit ExpressionReader(std::string_view text) : text_(text) {}

  std::optional<Expression> expression() {
    blanks();
    std::optional<Expression> result = fieldOrSums();
    blanks();
    if (!result || !atEnd()) return {};
    return result;
  }

  std::optional<FieldName> wholeBracketedField() {
    std::optional<FieldName> result = bracketedField();
    if (!atEnd()) return {};
    return result;
  }

 private:
  std::optional<Expression> fieldOrSums() {
    const std::size_t start = at_;
    if (std::optional<FieldName> plain = field()) return *plain;
    at_ = start;
    if (take('(')) {
      std::optional<FieldName> inner = bracketedField();
      if (!inner || !take(')')) return {};
      return *inner;
    }
    if (std::optional<std::vector<SumTerm>> terms = sums()) return *terms;
    return {};
  }

  // dataset."field"
  std::optional<FieldName> field() {
    FieldName name;
    name.dataset = word();
    if (name.dataset.empty() || !take('.') || !take('"')) return {};
    const std::size_t end = text_.find('"', at_);
    if (end == std::string_view::npos || end == at_) return {};
    name.field = text_.substr(at_, end - at_);
    at_ = end + 1;
    return name;
  }

  std::optional<FieldName> bracketedField() {
    blanks();
    if (!take('<')) return {};
    std::optional<FieldName> name = field();
    if (!name || !take('>')) return {};
    blanks();
    return name;
  }

  std::optional<std::vector<SumTerm>> sums() {
    std::vector<SumTerm> terms;
    do {
      blanks();
      std::optional<SumTerm> term = sum();
      if (!term) return {};
      terms.push_back(*term);
      blanks();
    } while (take('+'));
    return terms;
  }

  std::optional<SumTerm> sum() {
    if (word() != "SUM" || !take('(')) return {};
    std::optional<FieldName> name = bracketedField();
    if (!name) return {};
    SumTerm term{*name, {}, -1};
    if (take(',')) {
      blanks();
      term.band = word();
      blanks();
      if (term.band.empty()) return {};
    }
    if (!take(')')) return {};
    return term;
  }

  std::string word() {
    const std::size_t start = at_;
    while (!atEnd() && isWordCharacter(text_[at_])) ++at_;
    return std::string(text_.substr(start, at_ - start));
  }

  bool take(char c) {
    if (atEnd() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  void blanks() {
    while (take(' ')) {
    }
  }
  bool atEnd() const { return at_ == text_.size(); }

  std::string_view text_;
  std::size_t at_ = 0;
};

std::string writeSum(const SumTerm& term) {
  const std::string band = term.band.empty() ? "" : "," + term.band;
  return "SUM(" + writeFieldExpression(term.field) + band + ")";
}

std::string writeExpression(const Expression& expression) {
  if (const auto* field = std::get_if<FieldName>(&expression))
    return "[" + field->dataset + ".\"" + field->field + "\"]";
  std::string text;
  for (const SumTerm& term : std::get<std::vector<SumTerm>>(expression)) {
    if (!text.empty()) text += "+";
    text += writeSum(term);
  }
  return "[" + text + "]";
}

}  // namespace

std::variant<MemoText, ExpressionError> parseMemoText(std::string_view text) {
  MemoText result;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t open = text.find('[', at);
    if (open != at) result.emplace_back(std::string(text.substr(at, open - at)));
    if (open == std::string_view::npos) break;
    const std::size_t close = text.find(']', open);
    const std::string_view inside =
        text.substr(open + 1, close == std::string_view::npos ? close : close - open - 1);
    if (close == std::string_view::npos) {
      return ExpressionError{"il manque le crochet fermant de « [" + std::string(inside) + " »"};
    }
    std::optional<Expression> expression = ExpressionReader(inside).expression();
    if (!expression) {
      return ExpressionError{"« [" + std::string(inside) +
                             "] » n'est ni un champ, ni une somme SUM : seules ces formes sont permises"};
    }
    result.emplace_back(*expression);
    at = close + 1;
  }
  return result;
}

std::variant<FieldName, ExpressionError> parseFieldExpression(std::string_view text) {
  std::optional<FieldName> field = ExpressionReader(text).wholeBracketedField();
  if (field) return *field;
  return ExpressionError{"« " + std::string(text) +
                         " » ne nomme pas un champ sous la forme <source.\"champ\">"};
}

std::string writeMemoText(const MemoText& text) {
  std::string result;
  for (const auto& piece : text) {
    const auto* literal = std::get_if<std::string>(&piece);
    result += literal ? *literal : writeExpression(std::get<Expression>(piece));
  }
  return result;
}

std::string writeFieldExpression(const FieldName& field) {
  return "<" + field.dataset + ".\"" + field.field + "\">";
}

}  // namespace tavoline::report
