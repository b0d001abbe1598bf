#pragma once

#include <functional>
#include <string>

namespace tavoline {

/// Does a write. If the store refuses it, undoes what waits for it by `giveUp`, and throws StoreError with
/// the store's sentence, behind which `told` says what was done, what was not, and how to go on.
void orElse(const std::function<void()>& write, const std::function<void()>& giveUp, const std::string& told);

}  // namespace tavoline
