#include "data/sql/Types.h"

#include <initializer_list>

#include "data/sql/Refusal.h"

namespace tavoline::sql {
namespace {

template <class... Ts>
struct Overloaded : Ts... {
  using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

bool isArithmetic(Op op) {
  return op == Op::Add || op == Op::Subtract || op == Op::Multiply || op == Op::Divide;
}
bool isLogical(Op op) {
  return op == Op::And || op == Op::Or;
}
bool isNumber(FieldType type) {
  return type == FieldType::Integer || type == FieldType::Float;
}

bool isConstant(const Expr& expr) {
  return std::holds_alternative<Literal>(expr.node) || std::holds_alternative<Parameter>(expr.node);
}

FieldType typeOfValue(const Value& value) {
  if (value.isInteger()) return FieldType::Integer;
  if (value.isFloat()) return FieldType::Float;
  if (value.isDateTime()) return FieldType::DateTime;
  return value.isBytes() ? FieldType::Blob : FieldType::Text;
}

/// A literal that a column of `type` is compared with. An empty text is no number and no date: as a missing
/// value it compares with nothing, and so a filter `number=''` finds no row.
ExprPtr comparedAs(const ExprPtr& expr, FieldType type) {
  const auto* literal = std::get_if<Literal>(&expr->node);
  const bool empty = literal != nullptr && literal->value.isText() && literal->value.text().empty();
  if (empty && type != FieldType::Text) return make(Literal{});
  return typedAs(expr, type);
}

/// Gives constants the type of the first part that has one of its own.
void align(std::initializer_list<ExprPtr*> parts) {
  for (const ExprPtr* part : parts) {
    const auto type = isConstant(**part) ? std::nullopt : typeOf(**part);
    if (!type) continue;
    for (ExprPtr* other : parts) *other = comparedAs(*other, *type);
    return;
  }
}

void needValue(const ExprPtr& expr) {
  if (isCondition(*expr)) refuse("Une condition se trouve là où il faut une valeur.");
}

void needNumber(const ExprPtr& expr, const char* what) {
  const auto type = typeOf(*expr);
  if (type && !isNumber(*type)) refuse(std::string("Seuls des nombres ") + what + ".");
}

class Resolution {
 public:
  explicit Resolution(const ColumnFinder& found) : found_(found) {}

  ExprPtr value(const ExprPtr& expr) {
    ExprPtr result = any(expr);
    needValue(result);
    return result;
  }

  ExprPtr condition(const ExprPtr& expr) {
    ExprPtr result = any(expr);
    if (!isCondition(*result)) refuse("Une valeur se trouve là où il faut une condition.");
    return result;
  }

  ExprPtr any(const ExprPtr& expr) {
    return std::visit(
        Overloaded{[&](const Column& node) { return found_(node); }, [&](const Literal&) { return expr; },
                   [&](const Parameter&) { return expr; },
                   [&](const Binary& node) { return operation(node); },
                   [&](const Not& node) { return make(Not{condition(node.operand)}); },
                   [&](const IsNull& node) {
                     return make(IsNull{value(node.operand), node.negated});
                   },
                   [&](const Between& node) { return between(node); },
                   [&](const In& node) { return in(node); }, [&](const Call& node) { return call(node); }},
        expr->node);
  }

 private:
  ExprPtr operation(const Binary& node) {
    if (isLogical(node.op)) return binary(node.op, condition(node.left), condition(node.right));
    ExprPtr left = value(node.left), right = value(node.right);
    if (isArithmetic(node.op)) {
      left = typedAs(left, FieldType::Float);
      right = typedAs(right, FieldType::Float);
      needNumber(left, "se calculent");
      needNumber(right, "se calculent");
    } else if (node.op == Op::Like) {
      left = typedAs(left, FieldType::Text);
      right = typedAs(right, FieldType::Text);
    } else {
      align({&left, &right});
    }
    return binary(node.op, std::move(left), std::move(right));
  }

  ExprPtr between(const Between& node) {
    Between result{value(node.operand), value(node.low), value(node.high), false};
    align({&result.operand, &result.low, &result.high});
    const auto type = typeOf(*result.operand);
    result.ascending = type && isNumber(*type);
    return make(std::move(result));
  }

  ExprPtr in(const In& node) {
    In result{value(node.operand), node.values, node.negated};
    if (const auto type = typeOf(*result.operand)) {
      for (Value& v : result.values) v = v.as(*type);
    }
    return make(std::move(result));
  }

  ExprPtr call(const Call& node) {
    if (!node.argument) return make(node);
    Call result{node.function, value(node.argument)};
    if (containsAggregate(result.argument)) refuse("Une fonction d'ensemble en contient une autre.");
    if (node.function == Aggregate::Sum) {
      result.argument = typedAs(result.argument, FieldType::Float);
      needNumber(result.argument, "s'additionnent");
    }
    return make(std::move(result));
  }

  const ColumnFinder& found_;
};

}  // namespace

std::optional<FieldType> typeOf(const Expr& expr) {
  if (const auto* column = std::get_if<Column>(&expr.node)) return column->type;
  if (const auto* literal = std::get_if<Literal>(&expr.node)) return typeOfValue(literal->value);
  if (const auto* parameter = std::get_if<Parameter>(&expr.node))
    return parameter->typed ? std::optional(parameter->type) : std::nullopt;
  if (const auto* call = std::get_if<Call>(&expr.node))
    return call->function == Aggregate::Count ? FieldType::Integer : typeOf(*call->argument);
  const auto* operation = std::get_if<Binary>(&expr.node);
  if (operation != nullptr && isArithmetic(operation->op)) return FieldType::Float;
  return std::nullopt;
}

std::vector<FieldType> typesOf(const Select& select) {
  std::vector<FieldType> types;
  types.reserve(select.items.size());
  for (const Item& item : select.items) types.push_back(item.type);
  return types;
}

bool isCondition(const Expr& expr) {
  if (const auto* operation = std::get_if<Binary>(&expr.node)) return !isArithmetic(operation->op);
  return std::holds_alternative<Not>(expr.node) || std::holds_alternative<IsNull>(expr.node) ||
         std::holds_alternative<Between>(expr.node) || std::holds_alternative<In>(expr.node);
}

bool containsAggregate(const ExprPtr& expr) {
  bool found = false;
  walk(expr, [&](const Expr& part) { found = found || std::holds_alternative<Call>(part.node); });
  return found;
}

bool containsFirstOrLast(const ExprPtr& expr) {
  bool found = false;
  walk(expr, [&](const Expr& part) {
    const auto* call = std::get_if<Call>(&part.node);
    found = found || (call && (call->function == Aggregate::First || call->function == Aggregate::Last));
  });
  return found;
}

ExprPtr resolved(const ExprPtr& expr, const ColumnFinder& found) {
  return expr ? Resolution(found).value(expr) : nullptr;
}

ExprPtr resolvedCondition(const ExprPtr& expr, const ColumnFinder& found) {
  return expr ? Resolution(found).condition(expr) : nullptr;
}

ExprPtr typedAs(const ExprPtr& expr, FieldType type) {
  if (const auto* literal = std::get_if<Literal>(&expr->node)) return make(Literal{literal->value.as(type)});
  if (const auto* parameter = std::get_if<Parameter>(&expr->node))
    return make(Parameter{parameter->name, type, true});
  return expr;
}

void walk(const ExprPtr& expr, const std::function<void(const Expr&)>& visit) {
  if (!expr) return;
  visit(*expr);
  std::visit(Overloaded{[](const Column&) {}, [](const Literal&) {}, [](const Parameter&) {},
                        [&](const Binary& node) {
                          walk(node.left, visit);
                          walk(node.right, visit);
                        },
                        [&](const Not& node) { walk(node.operand, visit); },
                        [&](const IsNull& node) { walk(node.operand, visit); },
                        [&](const Between& node) {
                          walk(node.operand, visit);
                          walk(node.low, visit);
                          walk(node.high, visit);
                        },
                        [&](const In& node) { walk(node.operand, visit); },
                        [&](const Call& node) { walk(node.argument, visit); }},
             expr->node);
}

}  // namespace tavoline::sql
