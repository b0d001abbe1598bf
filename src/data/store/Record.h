#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavoline {

/// What a store's record of itself holds under a key; nothing where the record or the key is missing.
using StoreRecord = std::function<std::optional<std::string>(std::string_view key)>;

/// Throws StoreError unless the record is of a version that this program knows. `name` is what the user calls
/// the store.
void requireKnownVersion(const std::string& name, const StoreRecord& record);

/// Throws StoreError unless the record is of a version that this program knows, and bears `password`.
void admit(const std::string& name, const StoreRecord& record, std::string_view password);

}  // namespace tavoline
