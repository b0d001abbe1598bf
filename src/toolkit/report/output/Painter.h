#pragma once

#include <QtCore/QPointF>
#include <QtGui/QImage>

#include "toolkit/report/model/Document.h"

class QPainter;

namespace tavoline::report {

/// Puts pages of a document on any paint device. Only paints: what stands where and which words it bears was
/// settled when the document was prepared.
class PagePainter {
 public:
  explicit PagePainter(const Document& document);

  /// Paints a page with its paper's top left corner at `origin` of the painter's device, `scale` device dots
  /// to the unit. The paper itself is not painted.
  void paint(QPainter& painter, std::size_t page, QPointF origin, double scale) const;

 private:
  const Document& document_;
  QImage logo_;
};

}  // namespace tavoline::report
