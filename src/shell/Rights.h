#pragma once

#include <string_view>

namespace tavoline {

class TMenuF;

/// Sets the enabled state of the menu's buttons and entries as the role ("Admin", "KeyUser", "User") may use
/// them. Stays until the next login; nothing reads the role again.
void grantRights(TMenuF& menu, std::string_view role);

}  // namespace tavoline
