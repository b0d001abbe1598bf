#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace tavoline {

/// How many rows of each table were written, by its folded name.
using WriteCounts = std::map<std::string, std::int64_t, std::less<>>;

/// 0 for a table that is not counted yet: its first write begins.
std::int64_t countOf(const WriteCounts& counts, const std::string& table);

}  // namespace tavoline
