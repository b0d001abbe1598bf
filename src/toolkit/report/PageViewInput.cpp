#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <algorithm>

#include "toolkit/report/PageView.h"

namespace tavoline {

namespace {
constexpr double kStep = 1.25;
constexpr QSize kSmallestEditor(160, 48);
}  // namespace

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  const std::size_t page = currentPage();
  dropEditor();
  layOut();
  if (fit_ == Fit::Page) goTo(page);
  if (OnScrolled) OnScrolled();
}

void PageView::scrollContentsBy(int dx, int dy) {
  if (editor_) editor_->move(editor_->pos() + QPoint(dx, dy));
  viewport()->update();
  if (OnScrolled) OnScrolled();
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  zoomAt(zoom_ * (event->angleDelta().y() > 0 ? kStep : 1 / kStep), event->position());
  event->accept();
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && !(tool_ == Tool::Zoom && event->button() == Qt::RightButton))
    return;
  setFocus(Qt::MouseFocusReason);
  pressed_ = event->position();
  dragging_ = true;
  if (tool_ == Tool::Hand) viewport()->setCursor(Qt::ClosedHandCursor);
  if (tool_ == Tool::Select) select({});
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) return;
  if (tool_ == Tool::Hand) {
    const QPointF way = event->position() - pressed_;
    pressed_ = event->position();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - static_cast<int>(way.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() - static_cast<int>(way.y()));
  } else if (tool_ == Tool::Select) {
    select(QRectF(deskPoint(pressed_), deskPoint(event->position())));
  }
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragging_) return;
  dragging_ = false;
  switch (tool_) {
    case Tool::Hand:
      viewport()->setCursor(Qt::OpenHandCursor);
      break;
    case Tool::Zoom: {
      const bool out = event->button() == Qt::RightButton || (event->modifiers() & Qt::ShiftModifier);
      zoomAt(zoom_ * (out ? 1 / kStep : kStep), event->position());
      break;
    }
    case Tool::Select:
      select(QRectF(deskPoint(pressed_), deskPoint(event->position())));
      break;
    case Tool::Edit:
      editAt(event->position());
      break;
  }
}

bool PageView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Gesture) return pinch(static_cast<QGestureEvent*>(event));
  return QAbstractScrollArea::viewportEvent(event);
}

bool PageView::pinch(QGestureEvent* event) {
  auto* gesture = static_cast<QPinchGesture*>(event->gesture(Qt::PinchGesture));
  if (!gesture) return false;
  if (gesture->changeFlags() & QPinchGesture::ScaleFactorChanged) {
    zoomAt(zoom_ * gesture->scaleFactor(), viewport()->mapFromGlobal(gesture->centerPoint().toPoint()));
  }
  event->accept(gesture);
  return true;
}

bool PageView::editAt(QPointF point) {
  commitEdit();
  if (pageCount() == 0) return false;
  const QPointF desk = deskPoint(point);
  const std::size_t page = pageAt(desk.y());
  for (const report::Item& item : document_->items(page)) {
    if (!item.object->hasText() || item.object->kind == report::ObjectKind::BarCode) continue;
    const QRectF rect = itemRect(page, item);
    if (!rect.contains(desk)) continue;
    edited_ = {page, item.word};
    editor_ = new QPlainTextEdit(
        QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size())), viewport());
    editor_->setObjectName("pageTextEditor");
    QRect place = rect.translated(-deskPoint({0, 0})).toAlignedRect();
    place.setSize(place.size().expandedTo(kSmallestEditor));
    editor_->setGeometry(place);
    editor_->installEventFilter(this);
    editor_->selectAll();
    editor_->show();
    editor_->setFocus();
    return true;
  }
  return false;
}

// Enter keeps the correction, Shift and Enter begins a line, Escape drops it; going elsewhere keeps it.
bool PageView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != editor_) return QAbstractScrollArea::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) {
    commitEdit();
    return false;
  }
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() == Qt::Key_Escape) {
    dropEditor();
    return true;
  }
  const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  if (!enter || (key->modifiers() & Qt::ShiftModifier)) return false;
  commitEdit();
  return true;
}

void PageView::commitEdit() {
  if (!editor_) return;
  const std::string text = editor_->toPlainText().toStdString();
  dropEditor();
  document_->setText(edited_.page, edited_.word, text);
  pictures_.remove_if([this](const Picture& kept) { return kept.page == edited_.page; });
  viewport()->update();
}

void PageView::dropEditor() {
  if (!editor_) return;
  QPlainTextEdit* editor = editor_;
  editor_ = nullptr;
  editor->removeEventFilter(this);
  editor->hide();
  editor->deleteLater();
  setFocus();
}

}  // namespace tavoline
