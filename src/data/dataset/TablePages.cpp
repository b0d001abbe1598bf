// How a table cursor reads: pages by keyset conditions, single rows by number, pictures one by one.

#include <algorithm>
#include <iterator>

#include "data/dataset/TableCursor.h"
#include "data/sql/Resolver.h"

namespace tavoline {

namespace {
constexpr std::size_t kFirstPage = 4;  // most questions are about one row
constexpr std::size_t kLargestPage = 128;

sql::ExprPtr literal(Value value) {
  return sql::make(sql::Literal{std::move(value)});
}
}  // namespace

TableCursor::Key TableCursor::keyOf(const std::vector<Value>& values, RowId rid) const {
  Key key;
  key.reserve(order_.size() + 1);
  for (const auto& [column, descending] : order_) key.push_back(values[column]);
  key.emplace_back(rid);
  return key;
}

bool TableCursor::before(const Key& a, const Key& b) const {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    const bool descending = i < order_.size() && order_[i].second;
    return descending ? b[i] < a[i] : a[i] < b[i];
  }
  return false;
}

/// Rows behind `key` in the statement's order (or before it, backwards). The leading term stands alone as
/// well, so that an index on it is used as a range.
sql::ExprPtr TableCursor::beyond(const Key& key, bool inclusive, bool backwards, std::size_t part) const {
  const bool lastPart = part == order_.size();
  const sql::ExprPtr column = lastPart ? sql::rid(table_) : source_.select.items[order_[part].first].expr;
  const bool descending = !lastPart && order_[part].second;
  const bool upwards = descending == backwards;
  const Value& value = key[part];
  if (lastPart) {
    if (upwards)
      return sql::binary(inclusive ? sql::Op::GreaterEqual : sql::Op::Greater, column, literal(value));
    return sql::binary(inclusive ? sql::Op::LessEqual : sql::Op::Less, column, literal(value));
  }
  const sql::ExprPtr rest = beyond(key, inclusive, backwards, part + 1);
  if (value.isNull()) {  // null sorts before everything
    const sql::ExprPtr same = sql::conjunction(sql::make(sql::IsNull{column, false}), rest);
    return upwards ? sql::binary(sql::Op::Or, sql::make(sql::IsNull{column, true}), same) : same;
  }
  const sql::ExprPtr strict = sql::binary(upwards ? sql::Op::Greater : sql::Op::Less, column, literal(value));
  const sql::ExprPtr same = sql::conjunction(sql::binary(sql::Op::Equal, column, literal(value)), rest);
  sql::ExprPtr either = sql::binary(sql::Op::Or, strict, same);
  if (!upwards) return sql::binary(sql::Op::Or, sql::make(sql::IsNull{column, false}), either);
  return sql::conjunction(sql::binary(sql::Op::GreaterEqual, column, literal(value)), either);
}

sql::ExprPtr TableCursor::membership() const {
  if (!ceiling_) return nullptr;
  return sql::binary(sql::Op::LessEqual, sql::rid(table_), literal(Value(*ceiling_)));
}

TableCursor::Row TableCursor::readRow(const Rows& rows) const {
  Row row;
  row.rid = rows.value(0).toInteger();
  row.values.resize(source_.select.items.size());
  row.unread.assign(row.values.size(), true);
  for (std::size_t i = 0; i < readColumns_.size(); ++i) {
    row.values[readColumns_[i]] = rows.value(i + 1);
    row.unread[readColumns_[i]] = false;
  }
  row.key = keyOf(row.values, row.rid);
  return row;
}

/// Rows of the snapshot that satisfy the filter and `extra`, in order or against it, changed ones left out.
std::vector<TableCursor::Row> TableCursor::fetch(const sql::ExprPtr& extra, bool backwards, std::size_t limit,
                                                 bool& exhausted) {
  sql::Select select = narrowed_;
  select.items.clear();
  select.updatable = false;
  select.items.push_back({sql::rid(table_), "rid", FieldType::Integer});
  for (const std::size_t column : readColumns_) select.items.push_back(source_.select.items[column]);
  select.where = sql::conjunction(sql::conjunction(narrowed_.where, membership()), extra);
  select.orderBy.clear();
  for (const auto& [column, descending] : order_)
    select.orderBy.push_back({source_.select.items[column].expr, descending != backwards});
  select.orderBy.push_back({sql::rid(table_), backwards});
  select.limit = static_cast<std::int64_t>(limit);

  std::vector<Row> found;
  std::size_t seen = 0;
  const auto rows = source_.snapshot->query(select, source_.parameters);
  Key lastKey;
  while (rows->next()) {
    ++seen;
    Row row = readRow(*rows);
    if (changes_.contains(row.rid)) {
      lastKey = row.key;
      continue;
    }
    found.push_back(std::move(row));
  }
  exhausted = seen < limit;
  // A page of nothing but changed rows says nothing about what follows: read on behind it.
  if (found.empty() && !exhausted)
    return fetch(sql::conjunction(extra, beyond(lastKey, false, backwards)), backwards, limit, exhausted);
  return found;
}

/// The next page behind `from` (before it, backwards), changed rows merged in at their places.
std::vector<TableCursor::Row> TableCursor::page(const std::optional<Key>& from, bool inclusive,
                                                bool backwards, bool& exhausted) {
  pageSize_ = std::clamp(pageSize_ * 2, kFirstPage, kLargestPage);
  if (order_.empty() && filter_ && pageSize_ == kLargestPage) wholeList();  // someone walks through them all
  if (order_.empty() && list_ && list_->whole) return listedPage(from, inclusive, backwards, exhausted);
  std::vector<Row> rows =
      fetch(from ? beyond(*from, inclusive, backwards) : nullptr, backwards, pageSize_, exhausted);
  const auto comes = [&](const Key& a, const Key& b) { return backwards ? before(b, a) : before(a, b); };
  for (const auto& [rid, change] : changes_) {
    if (!change.row || !visible(*change.row)) continue;
    const Key& key = change.key;
    if (from && (comes(key, *from) || (!inclusive && !comes(*from, key)))) continue;
    if (!exhausted && (rows.empty() || comes(rows.back().key, key))) continue;
    const auto place =
        std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return comes(key, r.key); });
    rows.insert(place, *change.row);
  }
  return rows;
}

/// The same from the list, where there is one: a filter's index is in another order than the rows, and every
/// page would begin with sorting all that it finds.
std::vector<TableCursor::Row> TableCursor::listedPage(const std::optional<Key>& from, bool inclusive,
                                                      bool backwards, bool& exhausted) {
  const auto begin = list_->rids.cbegin(), end = list_->rids.cend() - std::ptrdiff_t(list_->own);
  auto first = begin, last = end;
  if (from) {
    const RowId rid = from->back().toInteger();
    auto& bound = backwards ? last : first;
    bound = inclusive == backwards ? std::upper_bound(begin, end, rid) : std::lower_bound(begin, end, rid);
  }
  exhausted = last - first <= std::ptrdiff_t(pageSize_);
  if (!exhausted && backwards) first = last - std::ptrdiff_t(pageSize_);
  if (!exhausted && !backwards) last = first + std::ptrdiff_t(pageSize_);

  std::vector<RowId> unchanged;
  std::copy_if(first, last, std::back_inserter(unchanged),
               [this](RowId rid) { return !changes_.contains(rid); });
  std::vector<Row> rows = findAll(unchanged);
  for (; first != last; ++first)
    if (const auto change = changes_.find(*first); change != changes_.end())
      rows.push_back(*change->second.row);
  std::sort(rows.begin(), rows.end(),
            [backwards](const Row& a, const Row& b) { return backwards ? b.rid < a.rid : a.rid < b.rid; });
  return rows;
}

/// Makes the page read from `from` the page at hand and stands on its first row in the direction of reading.
bool TableCursor::loadPage(const std::optional<Key>& from, bool inclusive, bool backwards) {
  bool exhausted = false;
  std::vector<Row> rows = page(from, inclusive, backwards, exhausted);
  if (rows.empty()) return false;
  page_.clear();
  if (backwards) {
    page_.assign(std::make_move_iterator(rows.rbegin()), std::make_move_iterator(rows.rend()));
    at_ = page_.size() - 1;
    pageStart_ = exhausted;
    pageEnd_ = !from;
  } else {
    page_.assign(std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
    at_ = 0;
    pageStart_ = !from;
    pageEnd_ = exhausted;
  }
  where_ = Where::Page;
  return true;
}

std::vector<TableCursor::Row> TableCursor::findAll(const std::vector<RowId>& rids) {
  std::vector<Row> found;
  if (rids.empty()) return found;
  sql::Select select = source_.select;
  select.items.clear();
  select.updatable = false;
  select.items.push_back({sql::rid(table_), "rid", FieldType::Integer});
  for (const std::size_t column : readColumns_) select.items.push_back(source_.select.items[column]);
  // Any row that was a member once stays one: the statement's own condition is not asked again.
  sql::In in{sql::rid(table_), {}, false};
  for (const RowId rid : rids) in.values.emplace_back(rid);
  select.where = sql::make(std::move(in));
  select.orderBy.clear();
  const auto rows = source_.snapshot->query(select, source_.parameters);
  while (rows->next()) found.push_back(readRow(*rows));
  return found;
}

std::optional<TableCursor::Row> TableCursor::find(RowId rid) {
  if (const auto change = changes_.find(rid); change != changes_.end()) return change->second.row;
  if (const auto own = ownRead_.find(rid); own != ownRead_.end()) return own->second;
  auto rows = findAll({rid});
  if (rows.empty()) return std::nullopt;
  return std::move(rows.front());
}

const Value& TableCursor::fetched(Row& row, std::size_t column) {
  if (row.unread.empty() || !row.unread[column]) return row.values[column];
  sql::Select select = source_.select;
  select.items = {source_.select.items[column]};
  select.updatable = false;
  select.where = sql::binary(sql::Op::Equal, sql::rid(table_), literal(Value(row.rid)));
  select.orderBy.clear();
  const auto rows = source_.snapshot->query(select, source_.parameters);
  if (rows->next()) row.values[column] = rows->value(0);
  row.unread[column] = false;
  return row.values[column];
}

}  // namespace tavoline
