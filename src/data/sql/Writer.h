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
  virtual std::string between(const std::string& x, const std::string& a, const std::string& b) const = 0;
  virtual std::string like(const std::string& x, const std::string& pattern) const = 0;
  /// How a text column sorts and compares: by code point in every engine.
  virtual std::string orderKey(const std::string& column, FieldType type) const = 0;
};

const Engine& sqliteEngine();

/// Engine text with its values in the order of the placeholders. Values are never written into the text.
struct Written {
  std::string text;
  std::vector<Value> values;
};

/// Writes a resolved statement. First and Last become a scalar lookup in rid order, so that an index can answer.
/// Throws ConversionError for a parameter that does not convert to the type it is compared with.
Written write(const Select& select, const Parameters& parameters, const Engine& engine);
Written write(const Update& update, const Parameters& parameters, const Engine& engine);

}  // namespace tavoline::sql
