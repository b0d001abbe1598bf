#pragma once

#include <functional>

#include "data/value/DateTime.h"

namespace tavoline {

/// The one source of "now". Tests set it; nothing else in the system asks the operating system for the time.
class Clock {
 public:
  static DateTime now();
  static DateTime today() { return now().date(); }
  /// Replaces the source; an empty function puts the system's clock back.
  static void set(std::function<DateTime()> source);
};

}  // namespace tavoline
