#pragma once

#include <string_view>

namespace tavoline::test {

/// Puts one text through the dialect: a statement and, behind a line "--", a filter on it. Both are read,
/// resolved, narrowed and written for every engine, and the filter is tested on a row. Throws
/// std::logic_error where something other than an Error comes out of the dialect, or where a written text
/// holds anything but names, known words and placeholders: then a value could stand in it.
void fuzzDialect(std::string_view input);

}  // namespace tavoline::test
