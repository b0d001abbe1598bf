#include "toolkit/controls/FlowPanel.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

namespace tavoline {

namespace {

std::vector<RunningClick*>& running() {
  static std::vector<RunningClick*> clicks;
  return clicks;
}

}  // namespace

RunningClick::RunningClick(const QWidget* tile) : tile_(tile) {
  running().push_back(this);
}

RunningClick::~RunningClick() {
  running().pop_back();
  for (QWidget* tile : leaving_) tile->deleteLater();
}

RunningClick* RunningClick::of(const QWidget* tile) {
  const auto& clicks = running();
  const auto found = std::find_if(clicks.begin(), clicks.end(), [tile](const RunningClick* click) {
    return click->tile_ == tile || tile->isAncestorOf(click->tile_);
  });
  return found == clicks.end() ? nullptr : *found;
}

/// What the tiles lie on. It says that it covers all behind it, so that a tile under a finger is painted
/// again without every frame around the panel.
class FlowPanel::Canvas : public QWidget {
 public:
  Canvas() { setAttribute(Qt::WA_OpaquePaintEvent); }
  QString hint;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    if (hint.isEmpty() || !children().isEmpty()) return;
    QFont letters = font();
    letters.setPixelSize(hintLetters);
    painter.setFont(letters);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(hintPlace(), Qt::AlignCenter | Qt::TextWordWrap, hint);
  }

 private:
  static constexpr int hintLetters = 19;  // pixels
  QRect hintPlace() const { return rect().adjusted(20, 20, -20, -20); }
};

FlowPanel::FlowPanel(QWidget* parent)
    : QFrame(parent),
      scroll_(new QScrollArea(this)),
      canvas_(new Canvas),
      fingers_(scroll_->viewport(), FingerScroll::ByPointer, false) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(scroll_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(canvas_);
  scroll_->viewport()->installEventFilter(this);
  scroll_->viewport()->setAutoFillBackground(false);
}

FlowPanel::~FlowPanel() {
  for (QWidget* tile : order_) tile->disconnect(this);
}

void FlowPanel::setFlowStyle(FlowStyle style) {
  style_ = style;
  scheduleArrange();
}

void FlowPanel::setGap(int pixels) {
  gap_ = pixels;
  scheduleArrange();
}

void FlowPanel::setHint(const QString& words) {
  if (std::exchange(canvas_->hint, words) != words && order_.empty()) canvas_->update();
}

void FlowPanel::add(QWidget* tile) {
  if (order_.empty()) canvas_->update();  // its hint goes
  tile->setParent(canvas_);
  order_.push_back(tile);
  connect(tile, &QObject::destroyed, this, &FlowPanel::forget);
  scheduleArrange();
}

void FlowPanel::Reveal(QWidget* tile) {
  arrange();
  scroll_->ensureWidgetVisible(tile);
}

void FlowPanel::forget(QObject* tile) {
  std::erase_if(order_, [tile](QWidget* known) { return static_cast<QObject*>(known) == tile; });
  scheduleArrange();
}

void FlowPanel::clear() {
  const std::vector<QWidget*> leaving = std::exchange(order_, {});
  for (QWidget* tile : leaving) {
    tile->disconnect(this);
    RunningClick* click = RunningClick::of(tile);
    if (!click) {
      delete tile;
      continue;
    }
    tile->hide();
    tile->setParent(nullptr);
    click->freeAfterwards(tile);
  }
  scheduleArrange();
}

void FlowPanel::scheduleArrange() {
  if (!std::exchange(dirty_, true)) QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

bool FlowPanel::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) arrange();
  return QFrame::event(event);
}

bool FlowPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == scroll_->viewport() && event->type() == QEvent::Resize) {
    dirty_ = true;
    arrange();
  }
  return QFrame::eventFilter(watched, event);
}

void FlowPanel::arrange() {
  if (!std::exchange(dirty_, false)) return;
  QSize room = scroll_->maximumViewportSize();
  QSize used = layOut(room, gap_);
  const bool rows = style_ == LeftRightTopBottom;
  const auto over = [&] { return rows ? used.height() > room.height() : used.width() > room.width(); };
  if (over()) used = layOut(room, gap_ / 2);
  const bool full = over();
  if (full) {  // once more, beside the scroll bar
    const QSize bars(rows ? scroll_->verticalScrollBar()->sizeHint().width() : 0,
                     rows ? 0 : scroll_->horizontalScrollBar()->sizeHint().height());
    room -= bars;
    used = layOut(room, gap_);
  }
  canvas_->resize(full ? used.expandedTo(rows ? QSize(room.width(), 0) : QSize(0, room.height())) : room);

  // Only a full panel takes hold of drags; in the others a press reaches its tile without any delay.
  fingers_.set(full);
}

/// Tiles one behind the other `gap_` apart, the rows or columns of them `gap` apart.
QSize FlowPanel::layOut(const QSize& room, int gap) {
  const bool rows = style_ == LeftRightTopBottom;
  const int length = rows ? room.width() : room.height();
  int along = gap_, across = gap, thickest = 0;
  QSize used(0, 0);
  for (QWidget* tile : order_) {
    const QSize size = tile->size();
    const int step = rows ? size.width() : size.height();
    if (along > gap_ && along + step + gap_ > length) {
      across += thickest + gap;
      along = gap_;
      thickest = 0;
    }
    const QPoint place = rows ? QPoint(along, across) : QPoint(across, along);
    tile->move(place);
    tile->show();
    const QSize air = rows ? QSize(gap_, gap) : QSize(gap, gap_);
    used = used.expandedTo(QSize(place.x(), place.y()) + size + air);
    along += step + gap_;
    thickest = std::max(thickest, rows ? size.height() : size.width());
  }
  return used;
}

}  // namespace tavoline
