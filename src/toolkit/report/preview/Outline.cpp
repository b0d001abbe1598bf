#include "toolkit/report/preview/Outline.h"

namespace tavoline {

namespace {

constexpr int kWords = 2;  // of the first row on a page

QString firstRow(const report::Document& document, std::size_t page) {
  QStringList words;
  const report::Band* band = nullptr;
  for (const report::Item& item : document.items(page)) {
    const bool data =
        item.band->kind == report::BandKind::MasterData || item.band->kind == report::BandKind::Summary;
    if (!data || item.text.empty()) continue;
    if (band && (item.band != band || words.size() == kWords)) break;
    band = item.band;
    words += QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size())).simplified();
  }
  return words.join(" ");
}

}  // namespace

void PreviewPanel::Outline::setDocument(std::shared_ptr<report::Document> document) {
  beginResetModel();
  document_ = std::move(document);
  rows_ = static_cast<int>(document_->pageCount());
  endResetModel();
}

void PreviewPanel::Outline::grown() {
  const int now = static_cast<int>(document_->pageCount());
  if (now <= rows_) return;
  beginInsertRows({}, rows_, now - 1);
  rows_ = now;
  endInsertRows();
}

int PreviewPanel::Outline::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

QVariant PreviewPanel::Outline::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  const QString first = firstRow(*document_, static_cast<std::size_t>(index.row()));
  const QString page = QString("Page %1").arg(index.row() + 1);
  return first.isEmpty() ? page : page + " : " + first;
}

}  // namespace tavoline
