#include "shell/OrElse.h"

#include "data/value/Errors.h"

namespace tavoline {

void orElse(const std::function<void()>& write, const std::function<void()>& giveUp,
            const std::string& told) {
  try {
    write();
  } catch (const StoreError& refusal) {
    giveUp();
    throw StoreError(told.empty() ? refusal.what() : refusal.what() + ("\n\n" + told));
  }
}

}  // namespace tavoline
