#pragma once

#include <string>

#include "data/value/Value.h"

namespace tavoline {

/// A declared default, which is SQL text, as the value of a column: constants are told; what only the engine
/// can work out stays unknown, as null.
Value constantDefault(const std::string& text, FieldType type);

}  // namespace tavoline
