#pragma once

#include <string>
#include <string_view>

namespace tavoline {

/// The difference of two amounts as screens show them: read from their texts with more digits than a stored
/// float has, so that 100,4 less 100,1 is 0,3. Throws ConversionError for a text that is no number.
std::string difference(std::string_view from, std::string_view what);

}  // namespace tavoline
