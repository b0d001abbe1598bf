#pragma once

#include <string_view>

#include "data/sql/Ast.h"

namespace tavoline::sql {

/// Reads one statement of the dialect: `select` with nested inner joins in parentheses, aggregates, `where`,
/// `group by`, `order by`; or `update … set`. Keywords may stand as names after a dot, in brackets, or where
/// only a name fits. A closing semicolon is allowed. Throws StatementError with the place of the fault.
Statement parseStatement(std::string_view text);

/// Reads a filter: terms `name=value` with `=`, `>=`, `<=`, `<`, `>`, `<>`, joined by `and` or `or` with or
/// without blanks, also directly after a closing quote. An empty text gives a null pointer. Throws
/// StatementError.
ExprPtr parseFilter(std::string_view text);

}  // namespace tavoline::sql
