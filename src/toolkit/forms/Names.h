#pragma once

class QWidget;

namespace tavoline {

/// Gives the controls of a screen names for who hears them read. A name of a control's own stays; otherwise
/// an input takes the label beside it or above it in its layout, a button without a caption its tooltip, a
/// list or grid the heading or title of its screen. Done for every screen by TForm::Ready.
void nameControls(QWidget& screen);

}  // namespace tavoline
