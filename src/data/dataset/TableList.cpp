// Rows of a table cursor by number: the list of row numbers is made for whoever counts or jumps, the rows
// themselves are read in stretches around those asked for.

#include <algorithm>
#include <limits>

#include "data/dataset/TableCursor.h"

namespace tavoline {

namespace {
constexpr std::size_t kFirstRows = 1024;  // listed at once
constexpr std::size_t kStretch = 64;
constexpr std::size_t kKept = 1024;  // rows held for those who ask by number
constexpr auto kAll = std::numeric_limits<std::size_t>::max();
constexpr RowId kLastOfAll = std::numeric_limits<RowId>::max();
}  // namespace

RowList& TableCursor::list() {
  if (list_) return *list_;
  list_.emplace();
  order_.empty() ? listFirstRows() : listInOrder();
  return *list_;
}

sql::Select TableCursor::listing() const {
  sql::Select select = narrowed_;
  select.items = {{sql::rid(table_), "rid", FieldType::Integer}};
  select.updatable = false;
  select.orderBy.clear();
  return select;
}

void TableCursor::listFirstRows() {
  sql::Select first = listing();
  first.where = sql::conjunction(narrowed_.where, membership());
  first.orderBy.push_back({sql::rid(table_), false});
  first.limit = static_cast<std::int64_t>(kFirstRows);
  std::vector<RowId>& rids = list_->rids;
  const auto rows = source_.snapshot->query(first, source_.parameters);
  while (rows->next()) rids.push_back(rows->value(0).toInteger());
  list_->whole = rids.size() < kFirstRows;
  layChangesOver(rids, list_->whole ? kLastOfAll : rids.back());
  if (list_->whole) addOwnRows();
}

/// The rest is asked for in no order, which leaves the engine free to read it from its narrowest index.
bool TableCursor::countOn(std::size_t rows) {
  RowList& list = this->list();
  if (list.whole) return true;
  if (!list.stream) list.stream = source_.snapshot->query(listing(), source_.parameters);
  for (; rows > 0; --rows) {
    if (!list.stream->next()) break;
    const RowId rid = list.stream->value(0).toInteger();
    if (!ceiling_ || rid <= *ceiling_) list.streamed.push_back(rid);
  }
  if (rows > 0) {
    list.rids = std::exchange(list.streamed, {});
    list.stream.reset();
    list.whole = true;
    layChangesOver(list.rids, kLastOfAll);
    addOwnRows();
  }
  return list.whole;
}

/// Takes away the rows that were changed here, puts those that are still visible in their places up to
/// `last`, and leaves all in order.
void TableCursor::layChangesOver(std::vector<RowId>& rids, RowId last) const {
  if (!changes_.empty()) std::erase_if(rids, [this](RowId rid) { return changes_.contains(rid); });
  for (const auto& [rid, change] : changes_)
    if (rid <= last && change.row && visible(*change.row)) rids.push_back(rid);
  if (!std::is_sorted(rids.begin(), rids.end())) std::sort(rids.begin(), rids.end());
}

void TableCursor::addOwnRows() {
  for (const Row& row : ownRows()) {
    if (!visible(row)) continue;
    list_->rids.push_back(row.rid);
    ++list_->own;
  }
}

/// A statement with an order of its own is listed as a whole: changed rows stand at their places, which are
/// known by key, and keys are only read where there are such rows.
void TableCursor::listInOrder() {
  sql::Select select = listing();
  select.where = sql::conjunction(narrowed_.where, membership());
  select.orderBy = source_.select.orderBy;
  select.orderBy.push_back({sql::rid(table_), false});
  std::vector<const Change*> changed;
  for (const auto& [rid, change] : changes_)
    if (change.row && visible(*change.row)) changed.push_back(&change);
  std::sort(changed.begin(), changed.end(),
            [this](const Change* a, const Change* b) { return before(a->key, b->key); });
  if (!changed.empty())
    for (const auto& [column, descending] : order_) select.items.push_back(source_.select.items[column]);

  std::vector<RowId>& rids = list_->rids;
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
  list_->whole = true;
  addOwnRows();
}

const std::vector<RowId>& TableCursor::wholeList() {
  countOn(kAll);
  return list_->rids;
}

std::size_t TableCursor::count() {
  return wholeList().size();
}

std::size_t TableCursor::counted() {
  return list().rids.size();
}

/// Where a row stands in the list, as far as it goes; its end if it does not.
std::vector<RowId>::iterator TableCursor::placeOf(RowId rid) {
  std::vector<RowId>& rids = list_->rids;
  const auto own = rids.end() - static_cast<std::ptrdiff_t>(list_->own);
  const auto found =
      order_.empty() ? std::lower_bound(rids.begin(), own, rid) : std::find(rids.begin(), own, rid);
  return found != own && *found == rid ? found : std::find(own, rids.end(), rid);
}

/// Of a row that was deleted here, or that the filter hides since it was written.
void TableCursor::unlist(RowId rid) {
  listRead_.erase(rid);
  if (!list_) return;
  const auto place = placeOf(rid);
  if (place == list_->rids.end()) return;
  if (list_->rids.end() - place <= static_cast<std::ptrdiff_t>(list_->own)) --list_->own;
  list_->rids.erase(place);
}

RowId TableCursor::listed(std::size_t record) {
  const std::vector<RowId>& first = list().rids;
  return record < first.size() ? first[record] : wholeList().at(record);
}

TableCursor::Row& TableCursor::rowAt(std::size_t record) {
  const RowId rid = listed(record);
  if (const auto change = changes_.find(rid); change != changes_.end() && change->second.row)
    return *change->second.row;
  if (const auto own = ownRead_.find(rid); own != ownRead_.end()) return own->second;
  if (const auto read = listRead_.find(rid); read != listRead_.end()) return read->second;
  if (listRead_.size() > kKept) listRead_.clear();
  const std::vector<RowId>& rids = list_->rids;
  const std::size_t from = record / kStretch * kStretch;
  const std::vector<RowId> wanted(
      rids.begin() + static_cast<std::ptrdiff_t>(from),
      rids.begin() + static_cast<std::ptrdiff_t>(std::min(from + kStretch, rids.size())));
  for (Row& row : findAll(wanted)) listRead_.insert_or_assign(row.rid, std::move(row));
  return listRead_.at(rid);
}

Value TableCursor::valueAt(std::size_t record, std::size_t column) {
  if (record >= counted() && record >= count()) return {};
  return fetched(rowAt(record), column);
}

int TableCursor::record() {
  if (!settle() || where_ == Where::Aside) return -1;
  const RowId rid = current().rid;
  list();
  auto place = placeOf(rid);
  if (place == list_->rids.end() && !list_->whole) {
    wholeList();
    place = placeOf(rid);
  }
  return place == list_->rids.end() ? -1 : static_cast<int>(place - list_->rids.begin());
}

bool TableCursor::moveTo(std::size_t record) {
  if (record >= counted() && record >= count()) return false;
  const Row row = rowAt(record);
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
