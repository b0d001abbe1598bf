#pragma once

#include <functional>

#include "data/value/DateTime.h"

namespace tavoline {

/// The one source of "now", for all that is written and shown. Tests set it.
class Clock {
 public:
  static DateTime now();
  static DateTime today() { return now().date(); }
  /// Replaces the source; an empty function puts the system's clock back.
  static void set(std::function<DateTime()> source);
};

}  // namespace tavoline
