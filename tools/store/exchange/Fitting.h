#pragma once

#include <optional>
#include <string>

#include "data/schema/Schema.h"
#include "data/value/Value.h"

namespace tavoline::tool {

/// Turns a value into one that the column holds, without losing anything of it; or says in French what keeps
/// it out, and leaves it as it was.
std::optional<std::string> fit(Value& value, const schema::Column& column);

/// What a column holds in a row that leaves it out; null for none.
Value defaultOf(const schema::Column& column);

/// A float in the fewest digits that give it again, with a point: "25", "0.1", "1e+300".
std::string exactText(double number);
/// The number that the whole text is; nothing for any other text.
std::optional<double> exactNumber(std::string_view text);
std::optional<std::int64_t> exactInteger(std::string_view text);

}  // namespace tavoline::tool
