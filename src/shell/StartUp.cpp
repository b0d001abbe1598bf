#include "shell/StartUp.h"

#include <sys/stat.h>

#include "data/DMU.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

void keepFilesPrivate() {
  struct stat store = {};
  const bool toGroup = ::stat("BDD.mdb", &store) == 0 && (store.st_mode & 0060) == 0060;
  ::umask(toGroup ? 0007 : 0077);
}

Creator makesDataModule() {
  return [] {
    DM = new TDM;
    Forms::BindControls();
    if (const std::string advice = DM->Advice(); !advice.empty()) ShowMessage(advice);
  };
}

bool startUp(const std::vector<Creator>& inOrder) {
  const bool started = guarded([&] {
    for (const Creator& make : inOrder) make();
  });
  if (!started) shutDown();
  return started;
}

void shutDown() {
  while (!Forms::all().empty()) delete Forms::all().back();
  delete DM;
  DM = nullptr;
}

}  // namespace tavoline
