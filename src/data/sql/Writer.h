#pragma once

#include <string>
#include <vector>

#include "data/sql/Ast.h"

namespace tavoline::sql {

/// What differs between the engines, named in one place.
class Engine {
 public:
  virtual ~Engine() = default;
  virtual std::string quotedName(const std::string& name) const = 0;
  virtual std::string placeholder(std::size_t number) const = 0;  ///< Numbers start at 1.
  /// `x` between `a` and `b` in either order, no row if one of them is missing. A placeholder may come twice.
  virtual std::string between(const std::string& x, const std::string& a, const std::string& b) const = 0;
  virtual std::string like(const std::string& x, const std::string& pattern) const = 0;
  /// How a text column sorts and compares: by code point in every engine.
  virtual std::string orderKey(const std::string& column, FieldType type) const = 0;
  /// One term of `order by`: a missing value comes before every other, or with `descending` after them.
  virtual std::string orderTerm(const std::string& key, bool descending) const = 0;
};

/// The embedded engine. Expects the SQL function tavoline_like(pattern, text) with the meaning of
/// matchesLike.
const Engine& sqliteEngine();
const Engine& postgresEngine();

/// Engine text with its values in the order of the placeholders. Values are never written into the text.
struct Written {
  std::string text;
  std::vector<Value> values;
};

/// Writes a resolved statement. First and Last become a scalar lookup in rid order, so that an index can
/// answer. The order of the rows is always told: what `order by` leaves open is the order of insertion (of
/// the tables in the order of the from clause), and of groups the order of their columns. Throws
/// ConversionError for a parameter that does not convert to the type it is compared with.
Written write(const Select& select, const Parameters& parameters, const Engine& engine);
Written write(const Update& update, const Parameters& parameters, const Engine& engine);

}  // namespace tavoline::sql
