#pragma once

#include <QtCore/QStringList>
#include <QtGui/QFont>

#include "toolkit/report/model/Template.h"

namespace tavoline::report {

/// The font that stands on this system for a template's font, sized for a device of `deviceDpi`.
QFont deviceFont(const Object& object, double scale, int deviceDpi);

/// The words of a memo as they come out at any scale.
struct FittedWords {
  QStringList lines;
  double size = 1;   ///< Share of the template's font size.
  bool cut = false;  ///< Whether dots stand for what found no room.
};

/// Fits words into `width` x `height` report units: they go on below and get smaller, down to what a thermal
/// printer still prints, then only whole lines are kept and dots stand for the rest. A figure stays on its
/// line, as small as it must be. Decided in a large size, so that every scale shows the same.
FittedWords fitWords(const QString& text, const Object& object, double width, double height);

}  // namespace tavoline::report
