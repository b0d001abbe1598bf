#pragma once

#include <QtWidgets/QFrame>
#include <vector>

#include "toolkit/controls/FingerScroll.h"

class QScrollArea;

namespace tavoline {

/// Lays its children out in order: along a row from the left, then the next row below; or down a column from
/// the top, then the next column to the right. Scrolls, by finger too, when they do not fit.
class FlowPanel : public QFrame {
  Q_OBJECT
  Q_PROPERTY(FlowStyle flowStyle READ flowStyle WRITE setFlowStyle)
  Q_PROPERTY(int gap READ gap WRITE setGap)

 public:
  enum FlowStyle { LeftRightTopBottom, TopBottomLeftRight };
  Q_ENUM(FlowStyle)
  explicit FlowPanel(QWidget* parent = nullptr);
  ~FlowPanel() override;

  FlowStyle flowStyle() const { return style_; }
  void setFlowStyle(FlowStyle style);
  int gap() const { return gap_; }
  void setGap(int pixels);  ///< Between tiles, and around them; half of it where a scroll bar is thus spared.

  /// What is to be done where there are no tiles, in a few words in the middle of the empty panel.
  void setHint(const QString& words);

  /// The panel becomes its parent; the tile keeps its own size. Its place is given when the event loop comes
  /// round, or when `tiles` is asked.
  void add(QWidget* tile);
  template <class T>
  std::vector<T*> tiles() {  ///< In layout order, laid out.
    arrange();
    std::vector<T*> found;
    for (QWidget* tile : order_) {
      if (auto* wanted = dynamic_cast<T*>(tile)) found.push_back(wanted);
    }
    return found;
  }
  /// Scrolls to a tile.
  void Reveal(QWidget* tile);
  /// Frees every tile at once; their names can be used again. A tile whose click is running is only taken out
  /// of the screen here and freed after it.
  void clear();

  QSize sizeHint() const override { return {420, 320}; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Canvas;
  void arrange();
  QSize layOut(const QSize& room, int gap);  // returns the size that the tiles take
  void forget(QObject* tile);
  void scheduleArrange();

  FlowStyle style_ = LeftRightTopBottom;
  int gap_ = 10;
  std::vector<QWidget*> order_;
  QScrollArea* scroll_;
  Canvas* canvas_;
  FingerScroll fingers_;
  bool dirty_ = false;
};

/// Marks a tile as running its click as long as this lives, so that it outlives being cleared away by that
/// click.
class RunningClick {
 public:
  explicit RunningClick(const QWidget* tile);
  ~RunningClick();
  RunningClick(const RunningClick&) = delete;
  RunningClick& operator=(const RunningClick&) = delete;
  /// The click that runs in the tile or in anything within it, the outermost one; null for none.
  static RunningClick* of(const QWidget* tile);
  void freeAfterwards(QWidget* tile) { leaving_.push_back(tile); }

 private:
  const QWidget* tile_;
  std::vector<QWidget*> leaving_;
};

}  // namespace tavoline
