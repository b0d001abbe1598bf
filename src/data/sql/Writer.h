#pragma once

#include <string>
#include <vector>

#include "data/sql/Ast.h"
#include "data/sql/Dialect.h"

namespace tavoline::sql {

/// A statement in the words of an engine, with its values in the order of the placeholders. Values are never
/// written into the text.
struct Written {
  std::string text;
  std::vector<Value> values;
};

/// Writes a resolved statement. First and Last become a scalar lookup in rid order, so that an index can
/// answer. The order of the rows is always told: what `order by` leaves open is the order of insertion (of
/// the tables in the order of the from clause), and of groups the order of their columns. Throws
/// ConversionError for a parameter that does not convert to the type it is compared with.
Written write(const Select& select, const Parameters& parameters, const Dialect& dialect);
Written write(const Update& update, const Parameters& parameters, const Dialect& dialect);

}  // namespace tavoline::sql
