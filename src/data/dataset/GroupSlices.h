#pragma once

#include <memory>

#include "data/dataset/HeldVersion.h"
#include "data/sql/Ast.h"
#include "data/store/Store.h"

namespace tavoline {

/// The rows of a grouped join whose first group column is bounded by two whole numbers (the months 1 to 12 of
/// a year), asked for value by value: the same rows in the same order, but who reads them waits for one value
/// at a time, and can show how far it is. Null where the statement is none of that kind.
std::unique_ptr<Rows> inSlices(const HeldVersion& snapshot, const sql::Select& select,
                               const sql::Parameters& parameters);

}  // namespace tavoline
