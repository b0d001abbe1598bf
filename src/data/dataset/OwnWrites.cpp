#include "data/dataset/OwnWrites.h"

#include <algorithm>

#include "data/sql/Resolver.h"

namespace tavoline {

bool OwnWrites::visible(const TableRow& row) const {
  return sql::holds(filter_, columns_, row.values);
}

void OwnWrites::change(TableRow row) {
  if (const auto own = inserted_.find(row.rid); own != inserted_.end())
    own->second = std::move(row);
  else
    changes_[row.rid].row = std::move(row);
}

void OwnWrites::erase(const TableRow& row) {
  if (inserted_.erase(row.rid) == 0) changes_[row.rid].row.reset();
}

void OwnWrites::insert(TableRow row) {
  inserted_.insert_or_assign(row.rid, std::move(row));
}

void OwnWrites::keep(const TableRow& row) {
  if (!inserted(row.rid)) changes_.try_emplace(row.rid, Change{row});
}

TableRow* OwnWrites::find(RowId rid) {
  if (const auto own = inserted_.find(rid); own != inserted_.end()) return &own->second;
  const auto change = changes_.find(rid);
  return change != changes_.end() && change->second.row ? &*change->second.row : nullptr;
}

std::vector<const TableRow*> OwnWrites::changedRows() const {
  std::vector<const TableRow*> rows;
  for (const auto& [rid, change] : changes_)
    if (change.row && visible(*change.row)) rows.push_back(&*change.row);
  if (!order_.byInsertion())
    std::ranges::sort(rows,
                      [this](const TableRow* a, const TableRow* b) { return order_.before(a->key, b->key); });
  return rows;
}

std::vector<TableRow> OwnWrites::laidOver(std::vector<TableRow> page, const Reading& reading,
                                          const RowKey* end) const {
  if (changes_.empty()) return page;
  std::erase_if(page, [this](const TableRow& row) { return changed(row.rid); });
  const auto earlier = [&](const RowKey& a, const RowKey& b) {
    return reading.backwards ? order_.before(b, a) : order_.before(a, b);
  };
  for (const auto& [rid, change] : changes_) {
    if (!change.row || !order_.comes(change.row->key, reading)) continue;
    if ((end && earlier(*end, change.row->key)) || !visible(*change.row)) continue;
    const auto place =
        std::ranges::find_if(page, [&](const TableRow& row) { return earlier(change.row->key, row.key); });
    page.insert(place, *change.row);
  }
  return page;
}

std::optional<RowId> OwnWrites::firstFrom(RowId rid) const {
  for (auto row = inserted_.lower_bound(rid); row != inserted_.end(); ++row)
    if (visible(row->second)) return row->first;
  return std::nullopt;
}

std::optional<RowId> OwnWrites::lastBefore(RowId rid) const {
  for (auto row = inserted_.lower_bound(rid); row != inserted_.begin();)
    if (visible((--row)->second)) return row->first;
  return std::nullopt;
}

std::vector<RowId> OwnWrites::insertedRows() const {
  std::vector<RowId> rids;
  rids.reserve(inserted_.size());
  for (const auto& [rid, row] : inserted_) rids.push_back(rid);
  return rids;
}

void OwnWrites::clear() {
  changes_.clear();
  inserted_.clear();
}

void OwnWrites::age() {
  changes_.clear();
  aged_ = !inserted_.empty();
}

void OwnWrites::reread(std::vector<TableRow> rows) {
  inserted_.clear();
  for (TableRow& row : rows) insert(std::move(row));
  aged_ = false;
}

}  // namespace tavoline
