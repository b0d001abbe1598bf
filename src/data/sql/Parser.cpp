#include "data/sql/Parser.h"

#include <algorithm>
#include <array>
#include <optional>

#include "data/sql/Lexer.h"
#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

// A statement of the system needs a few dozen of either; what is far beyond would only wear out the machine.
constexpr int kDeepest = 100;
constexpr int kMostOperators = 500;

/// Words that end an expression or a name list unless the place leaves no doubt that they are names.
constexpr std::array<std::string_view, 18> kKeywords = {"from", "where", "group", "order", "by",      "and",
                                                        "or",   "not",   "inner", "join",  "on",      "as",
                                                        "asc",  "desc",  "like",  "is",    "between", "set"};

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

struct Function {
  std::string_view name;
  Aggregate aggregate;
};
constexpr std::array<Function, 6> kFunctions = {{{"sum", Aggregate::Sum},
                                                 {"count", Aggregate::Count},
                                                 {"min", Aggregate::Min},
                                                 {"max", Aggregate::Max},
                                                 {"first", Aggregate::First},
                                                 {"last", Aggregate::Last}}};

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text), tokens_(tokens(text)) {}

  Statement statement() {
    if (takeWord("select")) return finish(select());
    if (takeWord("update")) return finish(update());
    fail("« select » ou « update »");
  }

  ExprPtr filter() {
    if (peek().kind == TokenKind::End) return nullptr;
    ExprPtr condition = filterTerms("or");
    if (peek().kind != TokenKind::End) fail("« and », « or » ou la fin du filtre");
    return condition;
  }

 private:
  // Tokens

  const Token& peek(std::size_t ahead = 0) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
  }
  [[noreturn]] void fail(std::string_view wanted) const { fault(text_, peek(), wanted); }

  bool isWord(std::string_view word, std::size_t ahead = 0) const {
    return peek(ahead).kind == TokenKind::Word && sameName(peek(ahead).text, word);
  }
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const {
    return peek(ahead).kind == TokenKind::Symbol && peek(ahead).text == symbol;
  }
  bool takeWord(std::string_view word) {
    const bool found = isWord(word);
    if (found) ++at_;
    return found;
  }
  bool takeSymbol(std::string_view symbol) {
    const bool found = isSymbol(symbol);
    if (found) ++at_;
    return found;
  }
  void needWord(std::string_view word) {
    if (!takeWord(word)) fail("« " + std::string(word) + " »");
  }
  void needSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) fail("« " + std::string(symbol) + " »");
  }

  /// A name where nothing else fits, so that keywords are names too.
  std::string name(std::string_view wanted) {
    if (peek().kind != TokenKind::Word && peek().kind != TokenKind::Name) fail(wanted);
    return tokens_[at_++].text;
  }

  bool isKeyword() const {
    if (peek().kind != TokenKind::Word) return false;
    for (const std::string_view keyword : kKeywords) {
      if (isWord(keyword)) return true;
    }
    return false;
  }

  std::optional<Op> comparison(std::size_t ahead = 0) const {
    for (const Comparison& candidate : kComparisons) {
      if (isSymbol(candidate.sign, ahead)) return candidate.op;
    }
    return std::nullopt;
  }

  template <class T>
  T finish(T statement) {
    takeSymbol(";");
    if (peek().kind != TokenKind::End) fail("la fin de l'instruction");
    return statement;
  }

  ExprPtr joined(Op op, ExprPtr left, ExprPtr right) {
    if (++operators_ > kMostOperators) fail("une instruction plus courte");
    return binary(op, std::move(left), std::move(right));
  }

  /// Counts how deep parentheses and signs are nested.
  class Nesting {
   public:
    explicit Nesting(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kDeepest) parser_.fail("moins de parenthèses");
    }
    ~Nesting() { --parser_.depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    Parser& parser_;
  };

  // Statements

  Select select() {
    Select result;
    do {
      result.items.push_back(item());
    } while (takeSymbol(","));
    needWord("from");
    result.from = from();
    if (takeWord("where")) result.where = condition();
    if (takeWord("group")) {
      needWord("by");
      do {
        result.groupBy.push_back(sum());
      } while (takeSymbol(","));
    }
    if (takeWord("order")) {
      needWord("by");
      do {
        Order order{sum(), takeWord("desc")};
        if (!order.descending) takeWord("asc");
        result.orderBy.push_back(std::move(order));
      } while (takeSymbol(","));
    }
    return result;
  }

  Item item() {
    if (takeSymbol("*")) return {};
    Item result;
    result.expr = sum();
    if (takeWord("as")) {
      result.name = name("un nom après « as »");
    } else if (peek().kind == TokenKind::Name || (peek().kind == TokenKind::Word && !isKeyword())) {
      result.name = name("un nom");
    } else if (const auto* column = std::get_if<Column>(&result.expr->node)) {
      result.name = column->name;
    }
    return result;
  }

  FromPtr from() {
    FromPtr left = branch();
    for (;;) {
      if (takeWord("inner")) {
        needWord("join");
      } else if (!takeWord("join")) {
        return left;
      }
      if (++operators_ > kMostOperators) fail("une instruction plus courte");
      From join;
      join.left = std::move(left);
      join.right = branch();
      needWord("on");
      join.on = condition();
      left = std::make_shared<const From>(std::move(join));
    }
  }

  FromPtr branch() {
    const Nesting nesting(*this);
    if (takeSymbol("(")) {
      FromPtr inner = from();
      needSymbol(")");
      return inner;
    }
    From table;
    table.table = name("le nom d'une table");
    return std::make_shared<const From>(std::move(table));
  }

  Update update() {
    Update result;
    result.table = name("le nom d'une table");
    needWord("set");
    do {
      Update::Assignment assignment;
      assignment.column = name("le nom d'une colonne");
      if (takeSymbol(".")) {
        if (!sameName(assignment.column, result.table)) fail("une colonne de la table modifiée");
        assignment.column = name("le nom d'une colonne");
      }
      needSymbol("=");
      assignment.value = sum();
      result.assignments.push_back(std::move(assignment));
    } while (takeSymbol(","));
    if (takeWord("where")) result.where = condition();
    return result;
  }

  // Expressions, from the loosest tie to the tightest

  ExprPtr condition() {
    ExprPtr left = conjunctionOfTerms();
    while (takeWord("or")) left = joined(Op::Or, left, conjunctionOfTerms());
    return left;
  }

  ExprPtr conjunctionOfTerms() {
    ExprPtr left = negation();
    while (takeWord("and")) left = joined(Op::And, left, negation());
    return left;
  }

  ExprPtr negation() {
    const Nesting nesting(*this);
    const bool isName = comparison(1) || isSymbol(".", 1);
    if (!isName && takeWord("not")) return make(Not{negation()});
    return predicate();
  }

  ExprPtr predicate() {
    ExprPtr left = sum();
    if (const auto op = comparison()) {
      ++at_;
      return joined(*op, left, sum());
    }
    if (takeWord("is")) {
      const bool negated = takeWord("not");
      needWord("null");
      return make(IsNull{left, negated});
    }
    const bool negated = takeWord("not");
    ExprPtr result;
    if (takeWord("like")) {
      result = joined(Op::Like, left, sum());
    } else if (takeWord("between")) {
      ExprPtr low = sum();
      needWord("and");
      result = make(Between{left, std::move(low), sum()});
    } else if (negated) {
      fail("« like » ou « between »");
    } else {
      return left;
    }
    return negated ? make(Not{result}) : result;
  }

  ExprPtr sum() {
    ExprPtr left = product();
    for (;;) {
      if (takeSymbol("+")) {
        left = joined(Op::Add, left, product());
      } else if (takeSymbol("-")) {
        left = joined(Op::Subtract, left, product());
      } else {
        return left;
      }
    }
  }

  ExprPtr product() {
    ExprPtr left = operand();
    for (;;) {
      if (takeSymbol("*")) {
        left = joined(Op::Multiply, left, operand());
      } else if (takeSymbol("/")) {
        left = joined(Op::Divide, left, operand());
      } else {
        return left;
      }
    }
  }

  ExprPtr operand() {
    const Nesting nesting(*this);
    if (takeSymbol("(")) {
      ExprPtr inner = condition();
      needSymbol(")");
      return inner;
    }
    if (takeSymbol("-")) return negative();
    const Token& token = peek();
    switch (token.kind) {
      case TokenKind::Text:
        ++at_;
        return make(Literal{token.text});
      case TokenKind::Number:
        ++at_;
        return make(Literal{token.number});
      case TokenKind::Parameter:
        ++at_;
        return make(Parameter{token.text});
      case TokenKind::Word:
        if (isSymbol("(", 1)) return call();
        return column();
      case TokenKind::Name:
        return column();
      case TokenKind::Symbol:
      case TokenKind::End:
        break;
    }
    fail("une valeur ou le nom d'une colonne");
  }

  ExprPtr negative() {
    if (peek().kind == TokenKind::Number) return make(Literal{Value(0) - tokens_[at_++].number});
    return joined(Op::Subtract, make(Literal{Value(0)}), operand());
  }

  ExprPtr call() {
    for (const Function& function : kFunctions) {
      if (!isWord(function.name)) continue;
      at_ += 2;
      Call result{function.aggregate, nullptr};
      if (function.aggregate != Aggregate::Count || !takeSymbol("*")) result.argument = sum();
      needSymbol(")");
      return make(std::move(result));
    }
    fail("une fonction connue (Sum, Count, Min, Max, First ou Last)");
  }

  ExprPtr column() {
    const bool sureOfName = comparison(1) || isSymbol(".", 1);
    if (isKeyword() && !sureOfName) fail("une valeur ou le nom d'une colonne");
    Column result;
    result.name = name("le nom d'une colonne");
    if (takeSymbol(".")) {
      result.table = std::move(result.name);
      result.name = name("le nom d'une colonne après « . »");
    }
    return make(std::move(result));
  }

  // Filters

  ExprPtr filterTerms(std::string_view word) {
    const bool outer = word == "or";
    ExprPtr left = outer ? filterTerms("and") : filterTerm();
    while (takeWord(word))
      left = joined(outer ? Op::Or : Op::And, left, outer ? filterTerms("and") : filterTerm());
    return left;
  }

  ExprPtr filterTerm() {
    Column field;
    field.name = name("le nom d'un champ");
    const auto op = comparison();
    if (!op) fail("une comparaison (=, >=, <=, <, > ou <>)");
    ++at_;
    return joined(*op, make(std::move(field)), filterValue());
  }

  ExprPtr filterValue() {
    const bool negative = isSymbol("-") && peek(1).kind == TokenKind::Number;
    if (negative) ++at_;
    const Token& token = peek();
    if (token.kind != TokenKind::Text && token.kind != TokenKind::Number) fail("une valeur");
    ++at_;
    if (token.kind == TokenKind::Text) return make(Literal{token.text});
    return make(Literal{negative ? Value(0) - token.number : token.number});
  }

  std::string_view text_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
  int operators_ = 0;
};

}  // namespace

Statement parseStatement(std::string_view text) {
  return Parser(text).statement();
}

ExprPtr parseFilter(std::string_view text) {
  return Parser(text).filter();
}

}  // namespace tavoline::sql
