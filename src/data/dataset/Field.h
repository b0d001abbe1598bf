#pragma once

#include <string>
#include <string_view>

#include "data/value/Value.h"

namespace tavoline {

class Dataset;

/// One field of a dataset's current row, read where a Value is wanted and written by assignment. Short-lived.
class FieldRef {
 public:
  FieldRef(Dataset& dataset, std::string_view name) : dataset_(dataset), name_(name) {}
  FieldRef(const FieldRef&) = default;

  operator Value() const { return get(); }
  Value get() const;

  FieldRef& operator=(const Value& value);
  FieldRef& operator=(const FieldRef& other) { return *this = other.get(); }

  bool isNull() const { return get().isNull(); }
  std::string text() const { return get().text(); }
  std::int64_t toInteger() const { return get().toInteger(); }
  double toFloat() const { return get().toFloat(); }
  DateTime toDateTime() const { return get().toDateTime(); }

 private:
  Dataset& dataset_;
  std::string name_;
};

inline bool operator==(const FieldRef& a, const Value& b) {
  return a.get() == b;
}

}  // namespace tavoline
