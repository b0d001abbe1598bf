#include "toolkit/report/preview/Build.h"

namespace tavoline::report {

bool complete(Build& build, QWidget* parent) {
  ProgressBox box("Préparation du document…", parent);
  std::size_t total = 0;
  while (build.advance && build.advance()) {
    if (!box.due()) continue;
    if (total == 0) total = build.total();
    if (!box.tell(build.done(), total)) {
      build.advance = nullptr;
      build.interrupted = true;
      return false;
    }
  }
  build.advance = nullptr;
  return true;
}

}  // namespace tavoline::report
