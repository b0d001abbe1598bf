#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What every engine says of a row that is refused, in French.
namespace tavoline {

std::string duplicateKey(std::string_view table, std::string_view column);
std::string missingValue(std::string_view table, std::string_view column);
/// `constraint` is the name of the rule that was broken; nothing unless it is one of the schema's widths.
std::optional<std::string> tooWide(std::string_view constraint);
std::string brokenRule();  ///< Where no more is known of the rule.
/// Somebody else keeps a write waiting for too long. `name` is what the user calls the store.
std::string storeBusy(const std::string& name);

}  // namespace tavoline
