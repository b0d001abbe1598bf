#pragma once

#include <cstdint>
#include <string_view>

namespace tavoline {

/// The number under which all workstations know what one of them is at ("caisse 3"). Never negative.
std::int64_t occupationKey(std::string_view occupation);

}  // namespace tavoline
