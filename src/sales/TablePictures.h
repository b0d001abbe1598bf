#pragma once

#include <QtGui/QPixmap>

namespace tavoline {

enum class TablePicture { Free, Busy };

/// A table seen from above with its chairs, 99 wide and 108 high: green when free, red when busy. The table
/// top is plain, since the tile writes the table's name over it.
QPixmap tablePicture(TablePicture which);

}  // namespace tavoline
