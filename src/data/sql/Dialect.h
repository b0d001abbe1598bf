#pragma once

#include <string>
#include <string_view>

#include "data/value/Value.h"

namespace tavoline::sql {

/// The words in which the statements of one engine differ from those of another.
class Dialect {
 public:
  virtual ~Dialect() = default;
  static std::string quotedName(std::string_view name);           ///< The same in every engine.
  virtual std::string placeholder(std::size_t number) const = 0;  ///< Numbers start at 1.
  /// `x` between `a` and `b` in either order, no row if one of them is missing. A placeholder may come twice.
  virtual std::string between(const std::string& x, const std::string& a, const std::string& b) const = 0;
  /// `x` like `pattern` with the meaning of matchesLike.
  virtual std::string like(const std::string& x, const std::string& pattern) const = 0;
  /// How a text column sorts and compares: by code point in every engine.
  virtual std::string orderKey(const std::string& column, FieldType type) const = 0;
  /// One term of `order by`: a missing value comes before every other, or with `descending` after them. A
  /// `present` one is never missing.
  virtual std::string orderTerm(const std::string& key, bool descending, bool present) const = 0;
  /// The sum of `x` over the rows, as `type`: whole numbers make a whole number.
  virtual std::string sum(const std::string& x, FieldType type) const = 0;
};

}  // namespace tavoline::sql
