#pragma once

#include <string_view>

namespace tavoline {

/// Whether a text is a figure: a number, an amount with or without its "DA", a percentage, a date. A figure
/// is never shown cut: with some digits less it would be another one.
bool isFigure(std::string_view text);

}  // namespace tavoline
