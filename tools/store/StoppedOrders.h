#pragma once

#include "tools/store/RowRules.h"

namespace tavoline::tool {

/// Finds the orders whose closing stopped between their total and their table, with their amounts: which desk
/// was credited and which was not, as far as what it should hold tells, and what the owner does about it.
void checkStoppedOrders(Findings& findings, const Engine& engine, const Ask& ask);

}  // namespace tavoline::tool
