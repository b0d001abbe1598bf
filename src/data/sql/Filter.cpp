// Filters: the condition that they put on a statement, and their test on a row in memory.

#include <optional>

#include "data/sql/Refusal.h"
#include "data/sql/Resolver.h"
#include "data/sql/Types.h"
#include "data/value/Text.h"

namespace tavoline::sql {
namespace {

/// A result column by its name, or else by the name of the column that it shows.
const Item& findItem(const std::vector<Item>& items, const std::string& name) {
  for (const Item& item : items) {
    if (sameName(item.name, name)) return item;
  }
  for (const Item& item : items) {
    const auto* column = item.expr ? std::get_if<Column>(&item.expr->node) : nullptr;
    if (column != nullptr && sameName(column->name, name)) return item;
  }
  refuse("Le champ « " + name + " » du filtre n'existe pas : vérifiez le nom.");
}

/// Truth as the engines have it: a comparison with a missing value is neither true nor false.
using Truth = std::optional<bool>;

class Evaluation {
 public:
  Evaluation(const std::vector<Item>& columns, const std::vector<Value>& row)
      : columns_(columns), row_(row) {}

  Truth truth(const ExprPtr& expr) const {
    if (const auto* node = std::get_if<Binary>(&expr->node)) return operation(*node);
    if (const auto* node = std::get_if<Not>(&expr->node)) return negated(truth(node->operand));
    if (const auto* node = std::get_if<IsNull>(&expr->node))
      return value(node->operand).isNull() != node->negated;
    if (const auto* node = std::get_if<Between>(&expr->node)) return between(*node);
    if (const auto* node = std::get_if<In>(&expr->node)) return in(*node);
    refuse("Une valeur se trouve là où il faut une condition.");
  }

 private:
  static Truth negated(Truth t) { return t ? Truth(!*t) : t; }

  static Truth conjunctionOf(Truth a, Truth b) {
    if (a == Truth(false) || b == Truth(false)) return false;
    return a && b ? Truth(true) : std::nullopt;
  }

  Truth operation(const Binary& node) const {
    if (node.op == Op::And) return conjunctionOf(truth(node.left), truth(node.right));
    if (node.op == Op::Or)
      return negated(conjunctionOf(negated(truth(node.left)), negated(truth(node.right))));
    const Value left = value(node.left), right = value(node.right);
    if (left.isNull() || right.isNull()) return std::nullopt;
    switch (node.op) {
      case Op::Equal:
        return left == right;
      case Op::NotEqual:
        return left != right;
      case Op::Less:
        return left < right;
      case Op::LessEqual:
        return left <= right;
      case Op::Greater:
        return left > right;
      case Op::GreaterEqual:
        return left >= right;
      case Op::Like:
        return matchesLike(left.text(), right.text());
      default:
        refuse("Une valeur se trouve là où il faut une condition.");
    }
  }

  Truth between(const Between& node) const {
    const Value x = value(node.operand), a = value(node.low), b = value(node.high);
    if (x.isNull() || a.isNull() || b.isNull()) return std::nullopt;
    return (a <= x && x <= b) || (!node.ascending && b <= x && x <= a);
  }

  Truth in(const In& node) const {
    const Value x = value(node.operand);
    if (x.isNull()) return std::nullopt;
    for (const Value& candidate : node.values) {
      if (x == candidate) return !node.negated;
    }
    return node.negated;
  }

  Value value(const ExprPtr& expr) const {
    if (const auto* literal = std::get_if<Literal>(&expr->node)) return literal->value;
    if (const auto* column = std::get_if<Column>(&expr->node)) return field(*column);
    if (const auto* node = std::get_if<Binary>(&expr->node)) {
      const Value left = value(node->left), right = value(node->right);
      if (node->op == Op::Add) return left + right;
      if (node->op == Op::Subtract) return left - right;
      if (node->op == Op::Multiply) return left * right;
      if (node->op == Op::Divide) return left / right;
    }
    refuse("Un filtre compare des champs avec des valeurs.");
  }

  Value field(const Column& column) const {
    for (std::size_t i = 0; i < columns_.size() && i < row_.size(); ++i) {
      if (sameName(columns_[i].name, column.name)) return row_[i];
    }
    refuse("Le champ « " + column.name + " » du filtre n'existe pas : vérifiez le nom.");
  }

  const std::vector<Item>& columns_;
  const std::vector<Value>& row_;
};

}  // namespace

Select narrowed(const Select& select, const ExprPtr& filter) {
  Select result = select;
  if (!filter) return result;
  const ExprPtr condition = resolvedCondition(filter, [&](const Column& column) {
    return column.rid ? make(column) : findItem(select.items, column.name).expr;
  });
  eachTerm(condition, [&](const ExprPtr& term) {
    ExprPtr& place = containsAggregate(term) ? result.having : result.where;
    place = conjunction(place, term);
  });
  return result;
}

ExprPtr resolveFilter(const ExprPtr& filter, const std::vector<Item>& columns) {
  return resolvedCondition(filter, [&](const Column& column) {
    const Item& item = findItem(columns, column.name);
    return make(Column{"", item.name, item.type, false});
  });
}

bool holds(const ExprPtr& filter, const std::vector<Item>& columns, const std::vector<Value>& row) {
  return !filter || Evaluation(columns, row).truth(filter) == Truth(true);
}

}  // namespace tavoline::sql
