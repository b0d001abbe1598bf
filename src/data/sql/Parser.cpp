#include "data/sql/Parser.h"

#include <array>

#include "data/sql/TokenReader.h"
#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

// A statement of the system needs a few dozen of either; what is far beyond would only wear out the machine.
constexpr int kDeepest = 100;
constexpr int kMostOperators = 500;

/// Words that end an expression or a list of names, unless the place leaves no doubt that they are names.
constexpr std::array<std::string_view, 18> kKeywords = {"from", "where", "group", "order", "by",      "and",
                                                        "or",   "not",   "inner", "join",  "on",      "as",
                                                        "asc",  "desc",  "like",  "is",    "between", "set"};

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

/// What statements and filters have in common.
class Grammar {
 protected:
  explicit Grammar(std::string_view text) : in_(text) {}

  ExprPtr joined(Op op, ExprPtr left, ExprPtr right) {
    count();
    return binary(op, std::move(left), std::move(right));
  }
  void count() {
    if (++operators_ > kMostOperators) in_.fail("une instruction plus courte");
  }

  /// Counts how deep parentheses and signs are nested.
  class Nesting {
   public:
    explicit Nesting(Grammar& grammar) : grammar_(grammar) {
      if (++grammar_.depth_ > kDeepest) grammar_.in_.fail("moins de parenthèses");
    }
    ~Nesting() { --grammar_.depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    Grammar& grammar_;
  };

  TokenReader in_;

 private:
  int depth_ = 0;
  int operators_ = 0;
};

class StatementParser : Grammar {
 public:
  explicit StatementParser(std::string_view text) : Grammar(text) {}

  Statement run() {
    if (in_.takeWord("select")) return finish(select());
    if (in_.takeWord("update")) return finish(update());
    in_.fail("« select » ou « update »");
  }

 private:
  template <class T>
  T finish(T statement) {
    in_.takeSymbol(";");
    if (!in_.atEnd()) in_.fail("la fin de l'instruction");
    return statement;
  }

  Select select() {
    Select result;
    do {
      result.items.push_back(item());
    } while (in_.takeSymbol(","));
    in_.needWord("from");
    result.from = from();
    if (in_.takeWord("where")) result.where = condition();
    if (in_.takeWord("group")) {
      in_.needWord("by");
      do {
        result.groupBy.push_back(sum());
      } while (in_.takeSymbol(","));
    }
    if (in_.takeWord("order")) {
      in_.needWord("by");
      do {
        result.orderBy.push_back(order());
      } while (in_.takeSymbol(","));
    }
    return result;
  }

  Item item() {
    if (in_.takeSymbol("*")) return {};
    Item result;
    result.expr = sum();
    const TokenKind next = in_.peek().kind;
    if (in_.takeWord("as")) {
      result.name = in_.name("un nom après « as »");
    } else if (next == TokenKind::Name || (next == TokenKind::Word && !atKeyword())) {
      result.name = in_.name("un nom");
    } else if (const auto* column = std::get_if<Column>(&result.expr->node)) {
      result.name = column->name;
    }
    return result;
  }

  FromPtr from() {
    FromPtr left = branch();
    for (;;) {
      if (in_.takeWord("inner")) {
        in_.needWord("join");
      } else if (!in_.takeWord("join")) {
        return left;
      }
      count();
      From join;
      join.left = std::move(left);
      join.right = branch();
      in_.needWord("on");
      join.on = condition();
      left = std::make_shared<const From>(std::move(join));
    }
  }

  FromPtr branch() {
    const Nesting nesting(*this);
    if (in_.takeSymbol("(")) {
      FromPtr inner = from();
      in_.needSymbol(")");
      return inner;
    }
    From table;
    table.table = in_.name("le nom d'une table");
    return std::make_shared<const From>(std::move(table));
  }

  Order order() {
    Order result{sum(), in_.takeWord("desc")};
    if (!result.descending) in_.takeWord("asc");
    return result;
  }

  Update update() {
    Update result;
    result.table = in_.name("le nom d'une table");
    in_.needWord("set");
    do {
      std::string column = assignedColumn(result.table);
      in_.needSymbol("=");
      result.assignments.push_back({std::move(column), sum()});
    } while (in_.takeSymbol(","));
    if (in_.takeWord("where")) result.where = condition();
    return result;
  }

  std::string assignedColumn(const std::string& table) {
    const Column column = columnName();
    if (!column.table.empty() && !sameName(column.table, table)) in_.fail("une colonne de la table modifiée");
    return column.name;
  }

  // Expressions, from the loosest tie to the tightest

  ExprPtr condition() {
    ExprPtr left = terms();
    while (in_.takeWord("or")) left = joined(Op::Or, left, terms());
    return left;
  }

  ExprPtr terms() {
    ExprPtr left = negation();
    while (in_.takeWord("and")) left = joined(Op::And, left, negation());
    return left;
  }

  ExprPtr negation() {
    const Nesting nesting(*this);
    if (!namesColumn() && in_.takeWord("not")) return make(Not{negation()});
    return predicate();
  }

  ExprPtr predicate() {
    ExprPtr left = sum();
    if (const auto op = in_.comparison()) {
      in_.take();
      return joined(*op, left, sum());
    }
    if (in_.takeWord("is")) {
      const bool negated = in_.takeWord("not");
      in_.needWord("null");
      return make(IsNull{left, negated});
    }
    const bool negated = in_.takeWord("not");
    ExprPtr result;
    if (in_.takeWord("like")) {
      result = joined(Op::Like, left, sum());
    } else if (in_.takeWord("between")) {
      ExprPtr low = sum();
      in_.needWord("and");
      result = make(Between{left, std::move(low), sum()});
    } else if (negated) {
      in_.fail("« like » ou « between »");
    } else {
      return left;
    }
    return negated ? make(Not{result}) : result;
  }

  ExprPtr sum() {
    ExprPtr left = product();
    for (;;) {
      if (in_.takeSymbol("+")) {
        left = joined(Op::Add, left, product());
      } else if (in_.takeSymbol("-")) {
        left = joined(Op::Subtract, left, product());
      } else {
        return left;
      }
    }
  }

  ExprPtr product() {
    ExprPtr left = operand();
    for (;;) {
      if (in_.takeSymbol("*")) {
        left = joined(Op::Multiply, left, operand());
      } else if (in_.takeSymbol("/")) {
        left = joined(Op::Divide, left, operand());
      } else {
        return left;
      }
    }
  }

  ExprPtr operand() {
    const Nesting nesting(*this);
    if (in_.takeSymbol("(")) {
      ExprPtr inner = condition();
      in_.needSymbol(")");
      return inner;
    }
    if (in_.takeSymbol("-")) return negative();
    switch (in_.peek().kind) {
      case TokenKind::Text:
        return make(Literal{in_.take().text});
      case TokenKind::Number:
        return make(Literal{in_.take().number});
      case TokenKind::Parameter:
        return make(Parameter{in_.take().text});
      case TokenKind::Word:
        return in_.isSymbol("(", 1) ? call() : column();
      case TokenKind::Name:
        return column();
      case TokenKind::Symbol:
      case TokenKind::End:
        break;
    }
    in_.fail("une valeur ou le nom d'une colonne");
  }

  ExprPtr negative() {
    if (in_.peek().kind == TokenKind::Number) return make(Literal{Value(0) - in_.take().number});
    return joined(Op::Subtract, make(Literal{Value(0)}), operand());
  }

  ExprPtr call() {
    for (const Function& function : kFunctions) {
      if (!in_.takeWord(function.name)) continue;
      in_.needSymbol("(");
      Call result{function.aggregate, nullptr};
      if (function.aggregate != Aggregate::Count || !in_.takeSymbol("*")) result.argument = sum();
      in_.needSymbol(")");
      return make(std::move(result));
    }
    in_.fail("une fonction connue (Sum, Count, Min, Max, First ou Last)");
  }

  ExprPtr column() {
    if (atKeyword() && !namesColumn()) in_.fail("une valeur ou le nom d'une colonne");
    return make(columnName());
  }

  Column columnName() {
    Column result;
    result.name = in_.name("le nom d'une colonne");
    if (in_.takeSymbol(".")) {
      result.table = std::move(result.name);
      result.name = in_.name("le nom d'une colonne après « . »");
    }
    return result;
  }

  bool atKeyword() const {
    for (const std::string_view keyword : kKeywords) {
      if (in_.isWord(keyword)) return true;
    }
    return false;
  }

  /// Whether what follows the word at hand leaves it no choice but to be a name.
  bool namesColumn() const { return in_.comparison(1) || in_.isSymbol(".", 1); }
};

class FilterParser : Grammar {
 public:
  explicit FilterParser(std::string_view text) : Grammar(text) {}

  ExprPtr run() {
    if (in_.atEnd()) return nullptr;
    ExprPtr left = terms();
    while (in_.takeWord("or")) left = joined(Op::Or, left, terms());
    if (!in_.atEnd()) in_.fail("« and », « or » ou la fin du filtre");
    return left;
  }

 private:
  ExprPtr terms() {
    ExprPtr left = term();
    while (in_.takeWord("and")) left = joined(Op::And, left, term());
    return left;
  }

  ExprPtr term() {
    Column field;
    field.name = in_.name("le nom d'un champ");
    const auto op = in_.comparison();
    if (!op) in_.fail("une comparaison (=, >=, <=, <, > ou <>)");
    in_.take();
    return joined(*op, make(std::move(field)), value());
  }

  ExprPtr value() {
    const bool negative = in_.takeSymbol("-");
    const TokenKind kind = in_.peek().kind;
    if (kind == TokenKind::Number) return make(Literal{Value(negative ? -1 : 1) * in_.take().number});
    if (kind == TokenKind::Text && !negative) return make(Literal{in_.take().text});
    in_.fail("une valeur");
  }
};

}  // namespace

Statement parseStatement(std::string_view text) {
  return StatementParser(text).run();
}

ExprPtr parseFilter(std::string_view text) {
  return FilterParser(text).run();
}

}  // namespace tavoline::sql
