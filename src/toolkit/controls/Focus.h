#pragma once

class QFocusEvent;
class QKeyEvent;
class QWidget;

#include <functional>

namespace tavoline {

/// Gives a control the focus, as screens do. Throws FocusError if its screen is visible and it cannot take
/// it.
void focusControl(QWidget& control);

/// Paints an input red (a mandatory input left empty) or in its own colour again.
void paintRed(QWidget& control, bool on);

/// True if the focus went to another control, and not merely to another window, a menu or a message box.
bool leavesControl(const QFocusEvent& event);

/// Return in an input that has no step of its own for it: clicks the `default` button of the window, if it
/// has one that is visible and enabled. True if it was that.
bool pressesDefault(QKeyEvent& event, const QWidget& input);

/// The keyboard path along a form: runs what is set for Return, Up and Down, guarded. True if it was one of
/// those.
bool pathKey(QKeyEvent& event, const std::function<void()>& enter, const std::function<void()>& up,
             const std::function<void()>& down);

}  // namespace tavoline
