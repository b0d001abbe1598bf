#include "toolkit/report/preview/PageView.h"

#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <cmath>

#include "toolkit/report/model/Lines.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

namespace {

constexpr int kGap = 16;                        // dots around pages
constexpr std::size_t kPictures = 6;            // kept at most,
constexpr qint64 kLargestPicture = 12'000'000;  // and none with more dots
constexpr QColor kEdge(0x8E, 0x88, 0x7E), kHit(0xFF, 0xC8, 0x3D), kSelected(0xB5, 0xDD, 0xDA);

// What the sheets lie on; they are white in every theme, as they will be printed.
QColor desk() {
  return shade() == Shade::Dark ? QColor(theme().shade) : QColor(0xBD, 0xB8, 0xAF);
}

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->grabGesture(Qt::PinchGesture);
  setTool(Tool::Hand);
}

PageView::~PageView() {
  dropEditor();
}

void PageView::setDocument(std::shared_ptr<report::Document> document) {
  dropEditor();
  document_ = std::move(document);
  edited_ = {};
  wentTo_.reset();
  painter_ = document_ ? std::make_unique<report::PagePainter>(*document_) : nullptr;
  hit_.reset();
  selection_ = {};
  pictures_.clear();
  layOut();
  verticalScrollBar()->setValue(0);
  viewport()->update();
}

void PageView::grown() {
  layOut();
  viewport()->update();
}

void PageView::changed() {
  dropEditor();
  wentTo_.reset();
  hit_.reset();
  selection_ = {};
  pictures_.clear();
  layOut();
  viewport()->update();
}

double PageView::scale() const {
  return zoom_ * logicalDpiX() / 96.0;
}

QSize PageView::pageSize() const {
  if (!document_) return {};
  const report::PageSetup& setup = document_->setup();
  return (QSizeF(setup.unitWidth(), setup.unitHeight()) * scale()).toSize().expandedTo({1, 1});
}

QRectF PageView::pageRect(std::size_t page) const {
  const QSize size = pageSize();
  const double left = std::max<double>(kGap, std::floor((viewport()->width() - size.width()) / 2.0));
  return {left, kGap + static_cast<double>(page) * (size.height() + kGap), static_cast<double>(size.width()),
          static_cast<double>(size.height())};
}

std::size_t PageView::pageAt(double deskY) const {
  if (pageCount() == 0) return 0;
  const double page = std::floor((deskY - kGap) / (pageSize().height() + kGap));
  return static_cast<std::size_t>(std::clamp(page, 0.0, static_cast<double>(pageCount() - 1)));
}

QPointF PageView::deskPoint(QPointF point) const {
  return point + QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

void PageView::layOut() {
  if (document_ && fit_ != Fit::None) {
    const report::PageSetup& setup = document_->setup();
    const double dots = logicalDpiX() / 96.0;
    const double width = (viewport()->width() - 2 * kGap) / (setup.unitWidth() * dots);
    const double height = (viewport()->height() - 2 * kGap) / (setup.unitHeight() * dots);
    const double wanted =
        std::clamp(fit_ == Fit::Width ? width : std::min(width, height), kSmallest, kLargest);
    if (wanted != zoom_) pictures_.clear();
    zoom_ = wanted;
  }
  const QSize size = pageSize();
  const auto total = kGap + static_cast<qint64>(pageCount()) * (size.height() + kGap);
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(48);
  verticalScrollBar()->setRange(
      0, static_cast<int>(std::clamp<qint64>(total - viewport()->height(), 0, INT_MAX)));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(48);
  horizontalScrollBar()->setRange(0, std::max(0, size.width() + 2 * kGap - viewport()->width()));
}

void PageView::setZoom(double zoom) {
  zoomAt(zoom, QRectF(viewport()->rect()).center());
}

void PageView::zoomAt(double zoom, QPointF point) {
  dropEditor();
  scroll_.stop();
  wentTo_.reset();
  fit_ = Fit::None;
  const double wanted = std::clamp(zoom, kSmallest, kLargest);
  const QPointF before = deskPoint(point);
  const std::size_t page = pageAt(before.y());
  const QPointF within = (before - pageRect(page).topLeft()) / zoom_;
  if (wanted != zoom_) {
    pictures_.clear();
    selection_ = {};
  }
  zoom_ = wanted;
  layOut();
  const QPointF after = pageRect(page).topLeft() + within * zoom_ - point;
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(after.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(after.y())));
  viewport()->update();
  if (OnScrolled) OnScrolled();
}

void PageView::setFit(Fit fit) {
  dropEditor();
  const std::size_t page = currentPage();
  fit_ = fit;
  selection_ = {};
  layOut();
  goTo(page);
  viewport()->update();
  if (OnScrolled) OnScrolled();
}

std::size_t PageView::currentPage() const {
  const int top = verticalScrollBar()->value();
  return wentTo_ && wentTo_->second == top ? wentTo_->first : pageAt(top + kGap);
}

void PageView::goTo(std::size_t page) {
  if (pageCount() == 0) return;
  scroll_.stop();
  const std::size_t wanted = std::min(page, pageCount() - 1);
  standAt(wanted, static_cast<int>(pageRect(wanted).top()) - kGap);
}

void PageView::standAt(std::size_t page, int scrolled) {
  verticalScrollBar()->setValue(scrolled);
  wentTo_ = {page, verticalScrollBar()->value()};
  if (OnScrolled) OnScrolled();
}

void PageView::setTool(Tool tool) {
  dropEditor();
  tool_ = tool;
  scroll_.stop();
  scroll_.set(tool != Tool::Select);  // there a finger draws the selection
  if (tool != Tool::Select) selection_ = {};
  constexpr Qt::CursorShape kCursors[] = {Qt::OpenHandCursor, Qt::CrossCursor, Qt::IBeamCursor,
                                          Qt::PointingHandCursor};
  viewport()->setCursor(kCursors[static_cast<int>(tool)]);
  viewport()->update();
}

QRectF PageView::itemRect(std::size_t page, const report::Item& item) const {
  const double dots = scale();
  const QRectF paper = pageRect(page);
  return {paper.left() + item.rect.left * dots, paper.top() + item.rect.top * dots, item.rect.width * dots,
          item.rect.height * dots};
}

void PageView::showHit(const report::Hit& hit) {
  hit_ = hit;
  for (const report::Item& item : document_->items(hit.page)) {
    if (item.word != hit.word || !item.object->hasText()) continue;
    bringIntoView(itemRect(hit.page, item));
    wentTo_ = {hit.page, verticalScrollBar()->value()};
  }
  viewport()->update();
}

void PageView::bringIntoView(const QRectF& desk) {
  if (QRectF(deskPoint({0, 0}), QSizeF(viewport()->size())).contains(desk)) return;
  verticalScrollBar()->setValue(static_cast<int>(desk.center().y() - viewport()->height() / 2.0));
  horizontalScrollBar()->setValue(static_cast<int>(desk.center().x() - viewport()->width() / 2.0));
}

void PageView::clearHit() {
  hit_.reset();
  viewport()->update();
}

void PageView::select(const QRectF& desk) {
  selection_ = desk.normalized();
  // A stroke straight down has no width, and touches texts all the same.
  if (!desk.isNull()) selection_.setSize(selection_.size().expandedTo({1, 1}));
  viewport()->update();
}

void PageView::selectAll() {
  if (pageCount() == 0) return;
  select(pageRect(0).united(pageRect(pageCount() - 1)));
}

QString PageView::selectedText() const {
  QString text;
  if (selection_.isNull() || pageCount() == 0) return text;
  for (std::size_t page = pageAt(selection_.top()); page <= pageAt(selection_.bottom()); ++page) {
    std::vector<report::Item> items = document_->items(page);
    std::erase_if(items,
                  [&](const report::Item& item) { return !selection_.intersects(itemRect(page, item)); });
    for (const auto& line : report::readingLines(items, report::Reading::Lines)) {
      QStringList words;
      for (const report::Word& word : line) words += QString::fromStdString(word.text).trimmed();
      text += words.join(u'\t') + u'\n';
    }
  }
  return text;
}

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), desk());
  if (pageCount() == 0) return;
  painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
  const QPointF first = deskPoint(event->rect().topLeft()), last = deskPoint(event->rect().bottomRight());
  for (std::size_t page = pageAt(first.y()); page <= pageAt(last.y()); ++page) paintPage(painter, page);
}

void PageView::paintPage(QPainter& painter, std::size_t page) {
  const QRectF paper = pageRect(page);
  painter.fillRect(paper.adjusted(-1, -1, 2, 2), kEdge);
  const QSize size = pageSize();
  if (static_cast<qint64>(size.width()) * size.height() > kLargestPicture) {
    painter.fillRect(paper, Qt::white);
    painter.save();
    painter.setClipRect(paper, Qt::IntersectClip);
    painter_->paint(painter, page, paper.topLeft(), scale());
    painter.restore();
  } else {
    painter.drawPixmap(paper.topLeft(), picture(page));
  }
  paintMarks(painter, page);
}

const QPixmap& PageView::picture(std::size_t page) {
  const auto found = std::find_if(pictures_.begin(), pictures_.end(),
                                  [page](const Picture& kept) { return kept.page == page; });
  if (found != pictures_.end()) {
    pictures_.splice(pictures_.begin(), pictures_, found);
    return pictures_.front().pixmap;
  }
  const double ratio = devicePixelRatioF();
  QPixmap pixmap(pageSize() * ratio);
  pixmap.fill(Qt::white);
  QPainter painter(&pixmap);
  painter_->paint(painter, page, {0, 0}, scale() * ratio);
  painter.end();
  pixmap.setDevicePixelRatio(ratio);
  pictures_.push_front({page, pixmap});
  if (pictures_.size() > kPictures) pictures_.pop_back();
  return pictures_.front().pixmap;
}

void PageView::paintMarks(QPainter& painter, std::size_t page) {
  const bool hitHere = hit_ && hit_->page == page;
  const bool selectionHere = !selection_.isNull() && selection_.intersects(pageRect(page));
  if (!hitHere && !selectionHere) return;
  painter.save();
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  for (const report::Item& item : document_->items(page)) {
    if (!item.object->hasText() || item.text.empty()) continue;
    const QRectF rect = itemRect(page, item);
    if (hitHere && item.word == hit_->word) painter.fillRect(rect, kHit);
    if (selectionHere && selection_.intersects(rect)) painter.fillRect(rect, kSelected);
  }
  painter.restore();
}

}  // namespace tavoline
