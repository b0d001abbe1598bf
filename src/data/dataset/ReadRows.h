#pragma once

#include <string_view>

#include "data/store/Store.h"

namespace tavoline {

/// All rows of a `select` as they are in the store now, each with its items in order. For what is only to be
/// shown: it holds no version and has no current row. Throws StatementError, StoreError.
ValueRows readRows(Store& store, std::string_view select);

}  // namespace tavoline
