#include "toolkit/forms/Guard.h"

#include <exception>
#include <string>

#include "toolkit/forms/Messages.h"

namespace tavoline {

bool guarded(const std::function<void()>& handler) {
  if (!handler) return true;
  std::string failure;
  try {
    const auto running = handler;  // a handler may free the control that holds it
    running();
    return true;
  } catch (const std::exception& error) {
    failure = error.what();
  } catch (...) {
    failure = "Une erreur inattendue s'est produite. L'opération en cours est abandonnée.";
  }
  ShowMessage(failure);
  return false;
}

}  // namespace tavoline
