#pragma once

#include <QtCore/QPointer>
#include <QtGui/QPixmap>
#include <QtWidgets/QAbstractScrollArea>
#include <functional>
#include <list>
#include <optional>

#include "toolkit/controls/FingerScroll.h"
#include "toolkit/report/model/Finder.h"
#include "toolkit/report/output/Painter.h"

class QGestureEvent;
class QPlainTextEdit;

namespace tavoline {

/// Pages one under the other, on a desk, to scroll, zoom, select in and correct. Paints what is in view and
/// keeps pictures of a few pages at most, however long the document.
class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent = nullptr);
  ~PageView() override;

  /// Shows another document from its first page; null for none.
  void setDocument(std::shared_ptr<report::Document> document);
  const std::shared_ptr<report::Document>& document() const { return document_; }
  void grown();    ///< Pages were added at the end.
  void changed();  ///< Any page may look different.

  enum class Fit { None, Width, Page };
  /// 1 shows a page in its own size at 96 dots per inch; between kSmallest and kLargest.
  void setZoom(double zoom);
  double zoom() const { return zoom_; }
  void setFit(Fit fit);  ///< Kept while the view changes its size.
  Fit fit() const { return fit_; }
  static constexpr double kSmallest = 0.1, kLargest = 8;

  std::size_t currentPage() const;  ///< The page at the top of the view, or the one gone to.
  void goTo(std::size_t page);      ///< Its head at the head of the view.

  enum class Tool { Hand, Zoom, Select, Edit };
  void setTool(Tool tool);
  Tool tool() const { return tool_; }

  void showHit(const report::Hit& hit);  ///< Marks a text and brings it into view.
  void clearHit();
  const std::optional<report::Hit>& hit() const { return hit_; }

  /// The selected texts as lines, their columns apart by tabs; empty without a selection.
  QString selectedText() const;
  bool hasSelection() const { return !selection_.isNull(); }
  /// Selects what a rectangle on the desk touches, in dots from the desk's head.
  void select(const QRectF& desk);
  void selectAll();
  /// Opens the text at a point of the viewport for correction; false if there is none.
  bool editAt(QPointF point);
  /// Opens a text without pointing at it: the one corrected last on the page at hand, or the page's first;
  /// with a step of 1 or -1 the next or the prior one of that last. False if there is none.
  bool editBeside(int step);

  QRectF pageRect(std::size_t page) const;  ///< On the desk, in dots.
  QPointF deskPoint(QPointF viewportPoint) const;
  std::size_t picturesKept() const { return pictures_.size(); }

  std::function<void()> OnScrolled;  ///< Page or zoom in view may be another.

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Picture {
    std::size_t page;
    QPixmap pixmap;
  };

  double scale() const;  // dots to the unit
  QSize pageSize() const;
  std::size_t pageAt(double deskY) const;
  std::size_t pageCount() const { return document_ ? document_->pageCount() : 0; }
  void layOut();
  void zoomAt(double zoom, QPointF viewportPoint);
  bool pinch(QGestureEvent* event);
  void paintPage(QPainter& painter, std::size_t page);
  const QPixmap& picture(std::size_t page);
  void paintMarks(QPainter& painter, std::size_t page);
  QRectF itemRect(std::size_t page, const report::Item& item) const;
  void standAt(std::size_t page, int scrolled);
  void bringIntoView(const QRectF& desk);
  std::vector<report::Item> correctable(std::size_t page) const;
  bool edit(std::size_t page, const report::Item& item);
  void commitEdit();
  void dropEditor();

  std::shared_ptr<report::Document> document_;
  std::unique_ptr<report::PagePainter> painter_;
  std::list<Picture> pictures_;  // the latest used first
  FingerScroll scroll_{viewport(), FingerScroll::ByTouch};
  double zoom_ = 1;
  Fit fit_ = Fit::None;
  Tool tool_ = Tool::Hand;
  std::optional<report::Hit> hit_;
  std::optional<std::pair<std::size_t, int>> wentTo_;  // and where the view stood then
  QRectF selection_;                                   // on the desk
  QPointF pressed_, at_;                               // in the viewport; for dragging
  bool dragging_ = false;
  double pinched_ = 1;  // the zoom when two fingers took hold
  QPointer<QPlainTextEdit> editor_;
  report::Hit edited_;
};

}  // namespace tavoline
