#pragma once

#include <functional>

namespace tavoline {

/// Runs a handler; an exception ends it and shows its text in a plain box. Nothing is thrown on, so that no
/// exception crosses Qt. True if the handler ran to its end.
bool guarded(const std::function<void()>& handler);

}  // namespace tavoline
