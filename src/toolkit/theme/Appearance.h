#pragma once

#include <QtCore/QSize>

namespace tavoline {

/// How much larger than drawn everything is shown on a display of this size (in the pixels that the desktop
/// tells): 1.0 up to 1366 × 768, 1.4 at 1920 × 1080, in steps of a tenth. The room that a screen is laid out
/// in is never smaller than 1366 × 768 for it.
double scaleFor(QSize display);

/// Makes the whole program larger on large displays. To be called before the application is made. The file
/// `affichage.ini` beside the store may say otherwise, for other eyes ("echelle=1.2"), and the environment
/// variable QT_SCALE_FACTOR before both.
void scaleToDisplay(int argc, char** argv);

}  // namespace tavoline
