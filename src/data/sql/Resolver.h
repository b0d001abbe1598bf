#pragma once

#include <string_view>
#include <vector>

#include "data/schema/Catalog.h"
#include "data/sql/Ast.h"

namespace tavoline::sql {

/// Replaces `*`, finds every table and column in the catalog without regard to case, writes their own
/// spelling and types into the tree, and converts literals to the type of the column they are compared with.
/// Throws StatementError for a name that is missing, ConversionError for a literal that does not convert.
Select resolve(const Select& select, const Catalog& catalog);
Update resolve(const Update& update, const Catalog& catalog);

/// The condition that a filter puts on a resolved statement: filter names are the statement's column names.
/// Returns the statement narrowed in its `where` (or `having`, for a column that is an aggregate).
Select narrowed(const Select& select, const ExprPtr& filter);

/// A filter with its names and literals resolved against the columns of a statement's result, for `holds`.
/// Throws like `resolve`.
ExprPtr resolveFilter(const ExprPtr& filter, const std::vector<Item>& columns);

/// Whether a row, its values in the order of `columns`, satisfies a filter from `resolveFilter`. A comparison
/// with null is false. A null filter holds for every row.
bool holds(const ExprPtr& filter, const std::vector<Item>& columns, const std::vector<Value>& row);

/// The tables that a resolved statement reads, each once, in the catalog's spelling.
std::vector<std::string> tablesOf(const Select& select);

}  // namespace tavoline::sql
