// Rows of a table cursor by number: the list of row numbers is made for whoever counts or jumps, the rows
// themselves are read in stretches around those asked for.

#include <algorithm>

#include "data/dataset/TableCursor.h"

namespace tavoline {

namespace {
constexpr std::size_t kStretch = 64;
constexpr std::size_t kKept = 1024;  // rows held for those who ask by number
}  // namespace

const std::vector<RowId>& TableCursor::list() {
  if (list_) return *list_;
  sql::Select select = narrowed_;
  select.items = {{sql::rid(table_), "rid", FieldType::Integer}};
  select.updatable = false;
  select.where = sql::conjunction(narrowed_.where, membership());
  select.orderBy = source_.select.orderBy;
  select.orderBy.push_back({sql::rid(table_), false});

  // Changed rows stand at their places, which are known by key; keys are only read where there are such rows.
  std::vector<const Change*> changed;
  for (const auto& [rid, change] : changes_)
    if (change.row && visible(*change.row)) changed.push_back(&change);
  std::sort(changed.begin(), changed.end(),
            [this](const Change* a, const Change* b) { return before(a->key, b->key); });
  if (!changed.empty())
    for (const auto& [column, descending] : order_) select.items.push_back(source_.select.items[column]);

  std::vector<RowId> rids;
  auto nextChanged = changed.begin();
  const auto rows = source_.snapshot->query(select, source_.parameters);
  while (rows->next()) {
    const RowId rid = rows->value(0).toInteger();
    if (nextChanged != changed.end()) {
      Key key;
      for (std::size_t i = 0; i < order_.size(); ++i) key.push_back(rows->value(i + 1));
      key.emplace_back(rid);
      while (nextChanged != changed.end() && before((*nextChanged)->key, key))
        rids.push_back((*nextChanged++)->row->rid);
    }
    if (!changes_.contains(rid)) rids.push_back(rid);
  }
  for (; nextChanged != changed.end(); ++nextChanged) rids.push_back((*nextChanged)->row->rid);
  listOwn_ = 0;
  for (const Row& row : ownRows())
    if (visible(row)) {
      rids.push_back(row.rid);
      ++listOwn_;
    }
  list_ = std::move(rids);
  return *list_;
}

std::size_t TableCursor::count() {
  return list().size();
}

TableCursor::Row& TableCursor::listed(std::size_t record) {
  const RowId rid = list().at(record);
  if (const auto change = changes_.find(rid); change != changes_.end() && change->second.row)
    return *change->second.row;
  if (const auto own = ownRead_.find(rid); own != ownRead_.end()) return own->second;
  if (const auto read = listRead_.find(rid); read != listRead_.end()) return read->second;
  if (listRead_.size() > kKept) listRead_.clear();
  const std::size_t from = record / kStretch * kStretch;
  std::vector<RowId> wanted;
  for (std::size_t i = from; i < std::min(from + kStretch, list_->size()); ++i) wanted.push_back((*list_)[i]);
  for (Row& row : findAll(wanted)) listRead_.insert_or_assign(row.rid, std::move(row));
  return listRead_.at(rid);
}

Value TableCursor::valueAt(std::size_t record, std::size_t column) {
  if (record >= list().size()) return {};
  return fetched(listed(record), column);
}

int TableCursor::record() {
  if (!settle()) return -1;
  const RowId rid = current().rid;
  const std::vector<RowId>& rids = list();
  const auto ownBegin = rids.end() - static_cast<std::ptrdiff_t>(listOwn_);
  auto found =
      order_.empty() ? std::lower_bound(rids.begin(), ownBegin, rid) : std::find(rids.begin(), ownBegin, rid);
  if (found == ownBegin || *found != rid) found = std::find(ownBegin, rids.end(), rid);
  return found == rids.end() ? -1 : static_cast<int>(found - rids.begin());
}

bool TableCursor::moveTo(std::size_t record) {
  if (record >= list().size()) return false;
  const Row row = listed(record);
  const auto own = std::find(own_.begin(), own_.end(), row.rid);
  if (own != own_.end()) {
    where_ = Where::Own;
    at_ = static_cast<std::size_t>(own - own_.begin());
    return true;
  }
  page_.assign(1, row);
  pageStart_ = pageEnd_ = false;
  pageSize_ = 0;
  at_ = 0;
  where_ = Where::Page;
  return true;
}

}  // namespace tavoline
