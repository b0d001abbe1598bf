#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "data/sql/Ast.h"

namespace tavoline::sql {

/// What a value expression gives; nothing for a condition and for a parameter that is compared with no
/// column.
std::optional<FieldType> typeOf(const Expr& expr);

/// Of the columns that a resolved statement gives.
std::vector<FieldType> typesOf(const Select& select);

/// True for what is true or false, as against what gives a value.
bool isCondition(const Expr& expr);

bool containsAggregate(const ExprPtr& expr);
/// Whether First or Last stands in the expression, which are taken in the order of the rows.
bool containsFirstOrLast(const ExprPtr& expr);

/// The same tree with every column replaced by what `found` gives for it, literals and parameters converted
/// to the type of what they are compared or reckoned with. A null pointer stays one. Throws ConversionError
/// for a literal that does not convert, StatementError where a condition stands for a value, or a value for a
/// condition.
using ColumnFinder = std::function<ExprPtr(const Column&)>;
ExprPtr resolved(const ExprPtr& expr, const ColumnFinder& found);

/// The same for what must be a condition (`where`, `on`).
ExprPtr resolvedCondition(const ExprPtr& expr, const ColumnFinder& found);

/// A resolved literal or parameter as a value of `type`; anything else stays as it is. Throws
/// ConversionError.
ExprPtr typedAs(const ExprPtr& expr, FieldType type);

/// Calls `visit` for the expression and all that it is made of, in order of appearance. Null is nothing.
void walk(const ExprPtr& expr, const std::function<void(const Expr&)>& visit);

}  // namespace tavoline::sql
