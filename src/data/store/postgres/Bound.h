#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data/store/postgres/Address.h"
#include "data/value/Value.h"

namespace tavoline::postgres {

/// The values of a statement in the form in which they are sent: bytes as they are, all else as text. The
/// pointers are into itself.
class Bound {
 public:
  /// Throws StoreError for a text that the server does not keep.
  Bound(const Address& address, const std::vector<Value>& values);

  int count() const { return static_cast<int>(pointers_.size()); }
  const char* const* pointers() const { return pointers_.data(); }
  const int* lengths() const { return lengths_.data(); }
  const int* formats() const { return formats_.data(); }

 private:
  std::vector<SharedBytes> bytes_;
  std::vector<std::string> texts_;  // never moved apart from the whole vector
  std::vector<const char*> pointers_;
  std::vector<int> lengths_, formats_;
};

/// A value other than bytes as the engine reads it; nothing for one that it takes for missing.
std::optional<std::string> asText(const Address& address, const Value& value);

}  // namespace tavoline::postgres
