#pragma once

#include <QtCore/QStringList>

class QPainter;
class QRect;

namespace tavoline {

/// What a tile tells beside its caption, in smaller letters and in marks. None of it is part of its `text`,
/// and none changes what a click does.
struct TileNotes {
  QStringList below;     ///< Lines beneath the caption, the first one in bold. Figures shrink, words are cut.
  QString badge;         ///< A count, in a round mark above the lower right corner.
  QString corner;        ///< A few words in the lower left corner.
  QString mark;          ///< The icon in the upper right corner, by its standard name.
  bool nothing = false;  ///< Nothing is left of what the tile stands for: it is pale, and its corner red.
  bool chosen = false;   ///< Return would press it: a frame in the accent colour.

  bool operator==(const TileNotes&) const = default;

  int heightBelow() const;  ///< Of the lines beneath the caption, in pixels.
  /// Draws the lines beneath the caption into `place`, which is as high as they are.
  void drawBelow(QPainter& painter, const QRect& place) const;
  /// Draws the rest over the tile.
  void drawOver(QPainter& painter, const QRect& tile, int reservedBelow) const;
};

}  // namespace tavoline
