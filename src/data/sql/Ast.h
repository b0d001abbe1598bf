#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "data/value/Value.h"

namespace tavoline::sql {

struct Expr;
/// Trees are immutable once resolved, so that they are shared between a statement and what is built around
/// it.
using ExprPtr = std::shared_ptr<const Expr>;

/// A column, by the words of the statement first; `resolve` fills in the catalog's own spelling and type.
struct Column {
  std::string table;  ///< Empty where the statement gives the column alone; never empty once resolved.
  std::string name;
  FieldType type = FieldType::Text;
  bool rid = false;  ///< The hidden row number of `table` instead of a named column.
};

/// A constant. `resolve` converts it to the type of the column it is compared with.
struct Literal {
  Value value;
};

/// `:name`. Its value comes at the run; it is converted to `type`, the type of the column it is compared
/// with, where `typed` says that there is one.
struct Parameter {
  std::string name;
  FieldType type = FieldType::Text;
  bool typed = false;
};

enum class Op {
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  And,
  Or,
  Add,
  Subtract,
  Multiply,
  Divide,
  Like
};

struct Binary {
  Op op;
  ExprPtr left, right;
};

struct Not {
  ExprPtr operand;
};

struct IsNull {
  ExprPtr operand;
  bool negated = false;
};

/// `between low and high`; false if any part is null. Bounds that are dates or texts may come in either
/// order; of numbers the lower one comes first, or nothing lies between them.
struct Between {
  ExprPtr operand, low, high;
  bool ascending = false;  ///< Set by `resolve`: numbers are compared.
};

/// `column in (values)`: only built by the system itself, never parsed.
struct In {
  ExprPtr operand;
  std::vector<Value> values;
  bool negated = false;
};

/// First and Last are taken in the order of insertion (rid) of the first table of the statement.
enum class Aggregate { Sum, Count, Min, Max, First, Last };

struct Call {
  Aggregate function;
  ExprPtr argument;  ///< Null for Count(*).
};

struct Expr {
  std::variant<Column, Literal, Parameter, Binary, Not, IsNull, Between, In, Call> node;
};

template <class T>
ExprPtr make(T node) {
  return std::make_shared<const Expr>(Expr{std::move(node)});
}

/// `a and b`, where either may be null.
ExprPtr conjunction(ExprPtr a, ExprPtr b);
/// Calls `take` for each term of `a and b and c`.
template <class Take>
void eachTerm(const ExprPtr& condition, const Take& take) {
  const auto* operation = std::get_if<Binary>(&condition->node);
  if (operation == nullptr || operation->op != Op::And) return take(condition);
  eachTerm(operation->left, take);
  eachTerm(operation->right, take);
}

ExprPtr binary(Op op, ExprPtr left, ExprPtr right);
ExprPtr rid(std::string table);

struct Item {
  ExprPtr expr;      ///< Null for `*` until resolved.
  std::string name;  ///< The alias, or the column's own name.
  FieldType type = FieldType::Text;
};

struct From;
using FromPtr = std::shared_ptr<const From>;
/// One table, or an inner join of two branches.
struct From {
  std::string table;  ///< Empty for a join.
  FromPtr left, right;
  ExprPtr on;
};

struct Order {
  ExprPtr expr;
  bool descending = false;
};

struct Select {
  std::vector<Item> items;
  FromPtr from;
  ExprPtr where;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;  ///< Never parsed; a filter on an aggregate column lands here.
  std::vector<Order> orderBy;
  std::optional<std::int64_t> limit;  ///< Never parsed; pages are asked for with it.

  /// Set by `resolve`: the statement is `select * from` one table, so each row is a row of that table.
  bool updatable = false;
};

struct Update {
  std::string table;
  struct Assignment {
    std::string column;
    ExprPtr value;
    FieldType type = FieldType::Text;
  };
  std::vector<Assignment> assignments;
  ExprPtr where;
};

using Statement = std::variant<Select, Update>;

/// Values of a run's parameters; names compare without regard to case, a missing one is null.
class Parameters {
 public:
  Value& operator[](const std::string& name);
  const Value& at(const std::string& name) const;
  auto begin() const { return values_.begin(); }
  auto end() const { return values_.end(); }

 private:
  std::map<std::string, Value> values_;  ///< By folded name.
};

}  // namespace tavoline::sql
