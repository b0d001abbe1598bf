#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGestureEvent>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <cmath>

#include "toolkit/report/preview/PageView.h"

namespace tavoline {

namespace {
constexpr double kStep = 1.25;
constexpr QSize kSmallestEditor(160, 48);
}  // namespace

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  // What was at the head of the view stays there, however the page is fitted.
  const std::size_t page = fit_ == Fit::Page ? currentPage() : pageAt(verticalScrollBar()->value());
  const double within = (verticalScrollBar()->value() - pageRect(page).top()) / pageRect(page).height();
  dropEditor();
  layOut();
  if (fit_ == Fit::Page) goTo(page);
  if (fit_ == Fit::Width)
    verticalScrollBar()->setValue(
        static_cast<int>(std::lround(pageRect(page).top() + within * pageRect(page).height())));
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

void PageView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && tool_ == Tool::Edit && editBeside(0)) return;
  if (event->key() == Qt::Key_Home) return verticalScrollBar()->setValue(0);
  if (event->key() == Qt::Key_End && pageCount() > 0)
    return standAt(pageCount() - 1, verticalScrollBar()->maximum());
  QAbstractScrollArea::keyPressEvent(event);
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && !(tool_ == Tool::Zoom && event->button() == Qt::RightButton))
    return;
  setFocus(Qt::MouseFocusReason);
  pressed_ = at_ = event->position();
  dragging_ = true;
  if (tool_ == Tool::Hand) viewport()->setCursor(Qt::ClosedHandCursor);
  if (tool_ == Tool::Select) select({});
}

// Two quick taps are two taps.
void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) return;
  if (tool_ == Tool::Hand) {
    const QPointF way = event->position() - at_;
    at_ = event->position();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - static_cast<int>(way.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() - static_cast<int>(way.y()));
  } else if (tool_ == Tool::Select) {
    select(QRectF(deskPoint(pressed_), deskPoint(event->position())));
  }
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (!dragging_) return;
  dragging_ = false;
  const bool tapped = (event->position() - pressed_).manhattanLength() < QApplication::startDragDistance();
  switch (tool_) {
    case Tool::Hand:
      viewport()->setCursor(Qt::OpenHandCursor);
      break;
    case Tool::Zoom: {
      if (!tapped) break;
      const bool out = event->button() == Qt::RightButton || (event->modifiers() & Qt::ShiftModifier);
      zoomAt(zoom_ * (out ? 1 / kStep : kStep), event->position());
      break;
    }
    case Tool::Select:
      select(QRectF(deskPoint(pressed_), deskPoint(event->position())));
      break;
    case Tool::Edit:
      if (tapped) editAt(event->position());
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
  if (gesture->state() == Qt::GestureStarted) pinched_ = zoom_;
  if (gesture->changeFlags() & QPinchGesture::ScaleFactorChanged) {
    zoomAt(pinched_ * gesture->totalScaleFactor(),
           viewport()->mapFromGlobal(gesture->centerPoint().toPoint()));
  }
  event->accept(gesture);
  return true;
}

std::vector<report::Item> PageView::correctable(std::size_t page) const {
  std::vector<report::Item> items;
  if (page < pageCount()) items = document_->items(page);
  std::erase_if(items, [](const report::Item& item) {
    return !item.object->hasText() || item.object->kind == report::ObjectKind::BarCode;
  });
  return items;
}

bool PageView::editAt(QPointF point) {
  commitEdit();
  const QPointF desk = deskPoint(point);
  const std::size_t page = pageAt(desk.y());
  for (const report::Item& item : correctable(page)) {
    if (itemRect(page, item).contains(desk)) return edit(page, item);
  }
  return false;
}

bool PageView::editBeside(int step) {
  commitEdit();
  const std::size_t page = step == 0 ? currentPage() : edited_.page;
  const std::vector<report::Item> texts = correctable(page);
  if (texts.empty()) return false;
  const auto last = std::find_if(texts.begin(), texts.end(), [this, page](const report::Item& item) {
    return page == edited_.page && item.word == edited_.word;
  });
  if (step == 0 || last == texts.end()) return edit(page, last == texts.end() ? texts.front() : *last);
  if (step > 0 && last + 1 != texts.end()) return edit(page, *(last + 1));
  if (step < 0 && last != texts.begin()) return edit(page, *(last - 1));
  const std::size_t beside = step > 0 ? page + 1 : page - 1;  // there is none before the first
  const std::vector<report::Item> others = correctable(beside);
  return !others.empty() && edit(beside, step > 0 ? others.front() : others.back());
}

bool PageView::edit(std::size_t page, const report::Item& item) {
  edited_ = {page, item.word};
  bringIntoView(itemRect(page, item));
  const QString text = QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size()));
  editor_ = new QPlainTextEdit(text, viewport());
  editor_->setObjectName("pageTextEditor");
  QRect place = itemRect(page, item).translated(-deskPoint({0, 0})).toAlignedRect();
  place.setSize(place.size().expandedTo(kSmallestEditor));
  place.moveRight(std::min(place.right(), viewport()->width() - 1));
  place.moveBottom(std::min(place.bottom(), viewport()->height() - 1));
  editor_->setGeometry(place);
  editor_->installEventFilter(this);
  editor_->selectAll();
  editor_->show();
  editor_->setFocus();
  return true;
}

// Enter keeps the correction, Shift and Enter begins a line, Tab goes on to the next text, Escape drops the
// correction; going elsewhere keeps it.
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
  if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
    editBeside(key->key() == Qt::Key_Tab ? 1 : -1);
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
