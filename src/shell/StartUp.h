#pragma once

#include <functional>
#include <vector>

namespace tavoline {

/// One step of the start: it makes a screen, or the data module. What it throws ends the start.
using Creator = std::function<void()>;

/// Makes a screen and stands it in its global: makes(LoginF).
template <class Screen>
Creator makes(Screen*& instance) {
  return [&instance] { instance = new Screen; };
}
/// Opens the store in the working directory and every dataset, then binds the screens that were made before.
Creator makesDataModule();

/// Whatever this process writes from now on (logs, tickets, exports) is for its user alone, or for the group
/// as well to which the store in the working directory is open.
void keepFilesPrivate();

/// Takes the steps in order. A failure ends the start: its message is shown in a plain box, what was made is
/// freed, and the answer is false. Nothing in the store is created or changed on the way.
bool startUp(const std::vector<Creator>& inOrder);

/// Frees the screens, the last made first, then the data module.
void shutDown();

}  // namespace tavoline
