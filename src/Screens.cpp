#include "Screens.h"

#include "shell/LoginU.h"
#include "shell/MenuU.h"

namespace tavoline {

std::vector<Creator> screensInOrder() {
  return {
      makes(MenuF),
      makesDataModule(),
      makes(LoginF),
  };
}

}  // namespace tavoline
