#pragma once

#include <vector>

#include "shell/StartUp.h"

namespace tavoline {

/// Everything that the process makes at its start, in order: the menu first, the data module second, then the
/// other screens. The order is fixed; a screen has its line here once it exists.
std::vector<Creator> screensInOrder();

}  // namespace tavoline
