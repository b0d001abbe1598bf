#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include "toolkit/theme/Theme.h"

namespace tavoline {

/// What the file `affichage.ini` beside the store says under this name, in small letters; empty for nothing.
QString displaySetting(const char* name);

/// How much larger than drawn everything is shown on a display of this size (in the pixels that the desktop
/// tells): 1.0 up to 1366 × 768, 1.4 at 1920 × 1080, in steps of a tenth. The room that a screen is laid out
/// in is never smaller than 1366 × 768 for it. A scale that is told (0 for none) counts as far as every
/// screen still has its room.
double scaleFor(QSize display, double told = 0);

/// Makes the whole program larger on large displays. To be called before the application is made. The file
/// `affichage.ini` beside the store may say otherwise, for other eyes ("echelle=1.2"), and the environment
/// variable QT_SCALE_FACTOR before both.
void scaleToDisplay(int argc, char** argv);

/// The theme to begin with: dark where the desktop is. `affichage.ini` may say otherwise ("theme=sombre" or
/// "theme=clair"). To be asked once the application is made, before a palette is set.
Shade shadeForDesktop();

}  // namespace tavoline
