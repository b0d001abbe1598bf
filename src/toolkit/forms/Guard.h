#pragma once

#include <exception>
#include <functional>

namespace tavoline {

/// Runs a handler; an exception ends it and shows its text in a plain box. Nothing is thrown on, so that no
/// exception crosses Qt. True if the handler ran to its end.
bool guarded(const std::function<void()>& handler);

/// The same for a handler of an event in whose midst no box may come up, as where the focus moves: what it
/// throws is shown once the event is over.
bool guardedToTellAfter(const std::function<void()>& handler);

/// Shows a failure once what goes on now has ended, for places where no box may come up: while painting, or
/// in the middle of the event loop. What fails again and again is told once at a time.
void tellLater(const std::exception_ptr& failure);

}  // namespace tavoline
