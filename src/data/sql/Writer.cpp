#include "data/sql/Writer.h"

#include <algorithm>
#include <ranges>

#include "data/sql/Resolver.h"
#include "data/sql/Types.h"
#include "data/value/Errors.h"

namespace tavoline::sql {
namespace {

const char* sign(Op op) {
  switch (op) {
    case Op::Equal:
      return " = ";
    case Op::NotEqual:
      return " <> ";
    case Op::Less:
      return " < ";
    case Op::LessEqual:
      return " <= ";
    case Op::Greater:
      return " > ";
    case Op::GreaterEqual:
      return " >= ";
    case Op::And:
      return " and ";
    case Op::Or:
      return " or ";
    case Op::Add:
      return " + ";
    case Op::Subtract:
      return " - ";
    case Op::Multiply:
      return " * ";
    case Op::Divide:
      return " / ";
    case Op::Like:
      break;
  }
  return " like ";
}

const char* functionName(Aggregate function) {
  switch (function) {
    case Aggregate::Count:
      return "count";
    case Aggregate::Min:
      return "min";
    default:
      return "max";
  }
}

bool comparesOrder(Op op) {
  return op == Op::Less || op == Op::LessEqual || op == Op::Greater || op == Op::GreaterEqual;
}

bool isFirstOrLast(const Call& call) {
  return call.function == Aggregate::First || call.function == Aggregate::Last;
}

bool isRowNumber(const ExprPtr& expr) {
  const auto* column = std::get_if<Column>(&expr->node);
  return column != nullptr && column->rid;
}

bool isRid(const ExprPtr& expr, const std::string& table) {
  return isRowNumber(expr) && std::get<Column>(expr->node).table == table;
}

class Writing {
 public:
  Writing(const Parameters& parameters, const Dialect& dialect)
      : parameters_(parameters), dialect_(dialect) {}

  Written select(const Select& select) {
    select_ = &select;
    tables_ = tablesOf(select);
    const bool aggregated = isAggregated();
    std::string text = "select " + items();
    // Where every column is a First or a Last, each looks its row up by itself, and a missing row gives null.
    const bool lookups = aggregated && select.groupBy.empty() && !reckonsOverRows();
    if (!lookups) text += " from " + from() + clause(" where ", where());
    if (!select.groupBy.empty()) text += " group by " + list(select.groupBy);
    if (select.having) text += (lookups ? " where " : " having ") + expression(select.having);
    if (!aggregated || !select.groupBy.empty()) text += clause(" order by ", order());
    if (select.limit) text += " limit " + std::to_string(*select.limit);
    return {std::move(text), std::move(values_)};
  }

  Written update(const Update& update) {
    std::string text = "update " + dialect_.quotedName(update.table) + " set ";
    for (const Update::Assignment& assignment : update.assignments) {
      if (&assignment != &update.assignments.front()) text += ", ";
      text += dialect_.quotedName(assignment.column) + " = " + expression(assignment.value);
    }
    if (update.where) text += " where " + expression(update.where);
    return {std::move(text), std::move(values_)};
  }

 private:
  // Clauses

  static std::string clause(const char* word, const std::string& body) {
    return body.empty() ? "" : word + body;
  }

  bool isAggregated() const {
    return !select_->groupBy.empty() ||
           std::any_of(select_->items.begin(), select_->items.end(),
                       [](const Item& item) { return containsAggregate(item.expr); });
  }

  /// Whether an aggregate goes through the rows, as all but First and Last do.
  bool reckonsOverRows() const {
    bool found = false;
    for (const Item& item : select_->items) {
      walk(item.expr, [&](const Expr& part) {
        const auto* call = std::get_if<Call>(&part.node);
        found = found || (call != nullptr && !isFirstOrLast(*call));
      });
    }
    return found;
  }

  std::string items() {
    std::string text;
    for (const Item& item : select_->items) {
      if (!text.empty()) text += ", ";
      text += expression(item.expr) + " as " + dialect_.quotedName(item.name);
    }
    return text;
  }

  /// Inner joins say the same as a list of tables with all their conditions, and leave the engine its choice
  /// of the order in which it walks them.
  std::string from() const {
    std::string text;
    for (const std::string& table : tables_) {
      if (!text.empty()) text += ", ";
      text += dialect_.quotedName(table);
    }
    return text;
  }

  std::string where() {
    ExprPtr condition = joinCondition(select_->from);
    condition = conjunction(std::move(condition), select_->where);
    return condition ? expression(condition) : "";
  }

  static ExprPtr joinCondition(const FromPtr& from) {
    if (!from->left) return nullptr;
    return conjunction(conjunction(joinCondition(from->left), joinCondition(from->right)), from->on);
  }

  std::string list(const std::vector<ExprPtr>& expressions) {
    std::string text;
    for (const ExprPtr& part : expressions) {
      if (!text.empty()) text += ", ";
      text += expression(part);
    }
    return text;
  }

  std::string order() {
    std::string text;
    const auto add = [&](const ExprPtr& expr, bool descending) {
      if (!text.empty()) text += ", ";
      text += dialect_.orderTerm(ordered(expr), descending, isRowNumber(expr));
    };
    for (const Order& term : select_->orderBy) add(term.expr, term.descending);
    for (const ExprPtr& group : select_->groupBy) add(group, false);
    if (!select_->groupBy.empty()) return text;
    for (const std::string& table : tables_) {
      const bool told = std::any_of(select_->orderBy.begin(), select_->orderBy.end(),
                                    [&](const Order& term) { return isRid(term.expr, table); });
      if (!told) add(rid(table), false);
    }
    return text;
  }

  // Expressions

  std::string bound(Value value) {
    values_.push_back(std::move(value));
    return dialect_.placeholder(values_.size());
  }

  std::string column(const Column& node) const {
    return dialect_.quotedName(node.table) + '.' + dialect_.quotedName(node.name);
  }

  /// An expression as it sorts.
  std::string ordered(const ExprPtr& expr) {
    const bool constant =
        std::holds_alternative<Literal>(expr->node) || std::holds_alternative<Parameter>(expr->node);
    std::string text = expression(expr);
    return constant ? text : dialect_.orderKey(text, typeOf(*expr).value_or(FieldType::Blob));
  }

  std::string expression(const ExprPtr& expr) {
    const Expr& e = *expr;
    if (const auto* node = std::get_if<Column>(&e.node)) return column(*node);
    if (const auto* node = std::get_if<Literal>(&e.node)) return bound(node->value);
    if (const auto* node = std::get_if<Parameter>(&e.node)) return bound(valueOf(*node));
    if (const auto* node = std::get_if<Binary>(&e.node)) return operation(*node);
    if (const auto* node = std::get_if<Not>(&e.node)) return "not (" + expression(node->operand) + ")";
    if (const auto* node = std::get_if<IsNull>(&e.node))
      return expression(node->operand) + (node->negated ? " is not null" : " is null");
    if (const auto* node = std::get_if<Between>(&e.node)) return between(*node);
    if (const auto* node = std::get_if<In>(&e.node)) return in(*node);
    return call(std::get<Call>(e.node));
  }

  Value valueOf(const Parameter& node) const {
    const Value& value = parameters_.at(node.name);
    return node.typed ? value.as(node.type) : value;
  }
  std::optional<Value> constant(const ExprPtr& expr) const {
    if (const auto* node = std::get_if<Literal>(&expr->node)) return node->value;
    if (const auto* node = std::get_if<Parameter>(&expr->node)) return valueOf(*node);
    return std::nullopt;
  }

  std::string operation(const Binary& node) {
    if (node.op == Op::And || node.op == Op::Or) return chain(node);
    if (node.op == Op::Like) {
      const std::string text = expression(node.left);
      return dialect_.like(text, expression(node.right));
    }
    if (comparesOrder(node.op)) {
      const std::string left = ordered(node.left);
      return left + sign(node.op) + ordered(node.right);
    }
    if (node.op == Op::Equal || node.op == Op::NotEqual) {
      const std::string left = expression(node.left);
      return left + sign(node.op) + expression(node.right);
    }
    return arithmetic(node);
  }

  /// `(a and b and c)`: one pair of parentheses for the whole chain, which engines nest only so deep.
  std::string chain(const Binary& node) {
    std::vector<ExprPtr> terms;
    const Binary* link = &node;
    for (;;) {
      terms.push_back(link->right);
      const auto* left = std::get_if<Binary>(&link->left->node);
      if (left == nullptr || left->op != node.op) break;
      link = left;
    }
    std::string text = "(" + expression(link->left);
    for (const ExprPtr& term : terms | std::views::reverse) text += sign(node.op) + expression(term);
    return text + ")";
  }

  /// In floats, whatever the columns hold; a division by zero gives null.
  std::string arithmetic(const Binary& node) {
    const std::string left = "cast(" + expression(node.left) + " as double precision)";
    std::string right = "cast(" + expression(node.right) + " as double precision)";
    if (node.op == Op::Divide) right = "nullif(" + right + ", " + bound(0.0) + ")";
    return "(" + left + sign(node.op) + right + ")";
  }

  /// Bounds that are one number or date make an equation: an index goes on behind it, and ends at a range.
  /// Others that are known are put in order here.
  std::string between(const Between& node) {
    const auto low = constant(node.low), high = constant(node.high);
    if (low && high && !low->isNull() && !low->isText() && *low == *high)
      return expression(node.operand) + sign(Op::Equal) + bound(*low);
    const std::string x = ordered(node.operand);
    const bool known = low && high && !low->isNull() && !high->isNull();
    if (!node.ascending && !known) {
      const std::string from = expression(node.low);
      return dialect_.between(x, from, expression(node.high));
    }
    const bool turned = !node.ascending && *high < *low;
    const std::string from = x + sign(Op::GreaterEqual) + expression(turned ? node.high : node.low);
    return "(" + from + sign(Op::And) + ordered(node.operand) + sign(Op::LessEqual) +
           expression(turned ? node.low : node.high) + ")";
  }

  std::string in(const In& node) {
    if (node.values.empty()) return node.negated ? "true" : "false";
    std::string text = expression(node.operand) + (node.negated ? " not in (" : " in (");
    for (const Value& value : node.values) {
      if (&value != &node.values.front()) text += ", ";
      text += bound(value);
    }
    return text + ")";
  }

  std::string call(const Call& node) {
    if (isFirstOrLast(node)) return lookup(node);
    if (!node.argument) return "count(*)";
    const bool compares = node.function == Aggregate::Min || node.function == Aggregate::Max;
    const std::string argument = compares ? ordered(node.argument) : expression(node.argument);
    if (node.function == Aggregate::Sum)
      return dialect_.sum(argument, typeOf(*node.argument).value_or(FieldType::Float));
    return std::string(functionName(node.function)) + "(" + argument + ")";
  }

  std::string lookup(const Call& node) {
    const std::string argument = expression(node.argument);
    const std::string place = " from " + from() + clause(" where ", where());
    const std::string key = expression(rid(tables_.front()));
    const std::string order = dialect_.orderTerm(key, node.function == Aggregate::Last, true);
    return "(select " + argument + place + " order by " + order + " limit 1)";
  }

  const Parameters& parameters_;
  const Dialect& dialect_;
  const Select* select_ = nullptr;
  std::vector<std::string> tables_;
  std::vector<Value> values_;
};

}  // namespace

Written write(const Select& select, const Parameters& parameters, const Dialect& dialect) {
  return Writing(parameters, dialect).select(select);
}

Written write(const Update& update, const Parameters& parameters, const Dialect& dialect) {
  return Writing(parameters, dialect).update(update);
}

}  // namespace tavoline::sql
