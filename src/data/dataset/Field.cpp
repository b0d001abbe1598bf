#include "data/dataset/Field.h"

#include "data/dataset/Dataset.h"

namespace tavoline {

Value FieldRef::get() const {
  return dataset_.FieldValue(name_);
}

FieldRef& FieldRef::operator=(const Value& value) {
  dataset_.SetFieldValue(name_, value);
  return *this;
}

}  // namespace tavoline
