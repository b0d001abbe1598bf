#pragma once

#include <functional>
#include <memory>

#include "toolkit/forms/ProgressBox.h"
#include "toolkit/report/output/Export.h"

namespace tavoline::report {

/// A document that may still be in the making: its finished pages can be looked at meanwhile.
struct Build {
  std::shared_ptr<Document> document;
  std::function<bool()>
      advance;  ///< One more piece of work; false when complete. Empty for a finished document.
  std::function<std::size_t()> done;   ///< Records read so far,
  std::function<std::size_t()> total;  ///< of how many; may be slow.
  bool interrupted = false;            ///< The user gave up: there are more records than pages show.
};

/// Does all the work that is left, with a progress box when it lasts. False when the user gave up; the
/// document then holds the pages made so far.
bool complete(Build& build, QWidget* parent);

}  // namespace tavoline::report
