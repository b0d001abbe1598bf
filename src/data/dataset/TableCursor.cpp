#include "data/dataset/TableCursor.h"

#include <algorithm>
#include <limits>

#include "data/dataset/ResultCursor.h"
#include "data/sql/Resolver.h"
#include "data/value/Errors.h"

namespace tavoline {

bool Cursor::countOn(std::size_t) {
  return true;
}
void Cursor::insert(Store&, const Written&) {
  throw DatasetError("Ces données ne peuvent pas être modifiées ici.");
}
void Cursor::update(Store&, const Written&) {
  throw DatasetError("Ces données ne peuvent pas être modifiées ici.");
}
void Cursor::erase(Store&) {
  throw DatasetError("Ces données ne peuvent pas être supprimées ici.");
}

std::unique_ptr<Cursor> makeCursor(CursorSource source) {
  if (source.select.updatable) return std::make_unique<TableCursor>(std::move(source));
  return std::make_unique<ResultCursor>(std::move(source));
}

TableCursor::TableCursor(CursorSource source) : source_(std::move(source)), narrowed_(source_.select) {
  table_ = source_.select.from->table;
  tables_ = {table_};
  for (std::size_t i = 0; i < source_.select.items.size(); ++i)
    if (source_.select.items[i].type != FieldType::Blob) readColumns_.push_back(i);
  for (const sql::Order& order : source_.select.orderBy) {
    const auto* column = std::get_if<sql::Column>(&order.expr->node);
    for (std::size_t i = 0; column && i < source_.select.items.size(); ++i)
      if (source_.select.items[i].name == column->name) order_.emplace_back(i, order.descending);
  }
}

void TableCursor::filter(const sql::ExprPtr& filter) {
  sql::Select narrowed = sql::narrowed(source_.select, filter);
  filter_ = sql::resolveFilter(filter, source_.select.items);
  narrowed_ = std::move(narrowed);
  list_.reset();
  page_.clear();
  pageSize_ = 0;
  aside_.reset();
  where_ = Where::Unread;
}

bool TableCursor::visible(const Row& row) const {
  return sql::holds(filter_, source_.select.items, row.values);
}

// --- The position
// -----------------------------------------------------------------------------------------------

bool TableCursor::first() {
  leaveAside();
  pageSize_ = 0;
  if (loadPage(std::nullopt, true, false)) return true;
  return ownNext(0);
}

bool TableCursor::last() {
  leaveAside();
  if (ownPrior(own_.size())) return true;
  pageSize_ = 0;
  return loadPage(std::nullopt, true, true);
}

void TableCursor::leaveAside() {
  aside_.reset();
  if (where_ == Where::Aside) where_ = Where::Unread;
}

bool TableCursor::next() {
  if (!settle()) return false;
  if (where_ == Where::Aside) {
    pageSize_ = 0;
    if (isOwn(lostRow_)) return ownNext(ownIndex(lostRow_) + 1);
    return loadPage(Key(lost_), false, false) || ownNext(0);
  }
  if (where_ == Where::Own) return ownNext(at_ + 1);
  if (at_ + 1 < page_.size()) return ++at_, true;
  if (!pageEnd_ && loadPage(Key(page_[at_].key), false, false)) return true;
  pageEnd_ = true;
  return ownNext(0);
}

bool TableCursor::prior() {
  if (!settle()) return false;
  if (where_ == Where::Aside && !isOwn(lostRow_)) {
    pageSize_ = 0;
    return loadPage(Key(lost_), false, true);
  }
  if (where_ == Where::Own || where_ == Where::Aside) {
    if (ownPrior(where_ == Where::Own ? at_ : ownIndex(lostRow_))) return true;
    return loadPage(std::nullopt, true, true);
  }
  if (at_ > 0) return --at_, true;
  return !pageStart_ && loadPage(Key(page_[at_].key), false, true);
}

bool TableCursor::onRow() {
  return settle();
}

/// Finds the current row if the position is not read yet, or its row may have gone.
bool TableCursor::settle() {
  switch (where_) {
    case Where::Unread:
      return first();
    case Where::Lost:
      return settleAfterLoss();
    case Where::Page:
      return at_ < page_.size();
    case Where::Own:
      return at_ < own_.size();
    case Where::Aside:
      return true;
  }
  return false;
}

bool TableCursor::isOwn(RowId rid) const {
  return std::binary_search(own_.begin(), own_.end(), rid);
}

/// Where an own row stands in `own_`, or would stand.
std::size_t TableCursor::ownIndex(RowId rid) const {
  return static_cast<std::size_t>(std::lower_bound(own_.begin(), own_.end(), rid) - own_.begin());
}

/// The row itself if it is still there, and visible or aside; else the next; else the one before; else none.
bool TableCursor::settleAfterLoss() {
  const Key key = lost_;
  pageSize_ = 0;
  ownRows();  // drops those that were deleted elsewhere
  if (std::exchange(aside_, std::nullopt)) {
    aside_ = find(lostRow_);
    if (aside_ && !visible(*aside_)) return where_ = Where::Aside, true;
    aside_.reset();
  }
  if (isOwn(lostRow_) || (ceiling_ && lostRow_ > *ceiling_)) {
    const std::size_t index = ownIndex(lostRow_);
    return ownNext(index) || ownPrior(index) || loadPage(std::nullopt, true, true);
  }
  return loadPage(key, true, false) || ownNext(0) || loadPage(key, false, true);
}

bool TableCursor::ownNext(std::size_t from) {
  if (from >= own_.size()) return false;
  const std::vector<Row> rows = ownRows();
  for (std::size_t i = from; i < rows.size(); ++i)
    if (visible(rows[i])) return where_ = Where::Own, at_ = i, true;
  return false;
}

bool TableCursor::ownPrior(std::size_t from) {
  if (from == 0 || own_.empty()) return false;
  const std::vector<Row> rows = ownRows();
  for (std::size_t i = std::min(from, rows.size()); i-- > 0;)
    if (visible(rows[i])) return where_ = Where::Own, at_ = i, true;
  return false;
}

/// The rows inserted here, in order; read again after a refresh, when those deleted elsewhere drop out.
std::vector<TableCursor::Row> TableCursor::ownRows() {
  if (ownRead_.size() != own_.size()) {
    std::vector<RowId> missing;
    for (const RowId rid : own_)
      if (!ownRead_.contains(rid)) missing.push_back(rid);
    for (Row& row : findAll(missing)) ownRead_.emplace(row.rid, std::move(row));
    std::erase_if(own_, [&](RowId rid) { return !ownRead_.contains(rid); });
  }
  std::vector<Row> rows;
  rows.reserve(own_.size());
  for (const RowId rid : own_) rows.push_back(ownRead_.at(rid));
  return rows;
}

TableCursor::Row& TableCursor::current() {
  if (where_ == Where::Aside) return *aside_;
  if (where_ == Where::Own) {
    ownRows();
    return ownRead_.at(own_.at(at_));
  }
  return page_.at(at_);
}

Value TableCursor::value(std::size_t column) {
  return fetched(current(), column);
}

std::vector<Value> TableCursor::values() {
  return current().values;
}

bool TableCursor::locate(std::size_t column, const Value& value) {
  const sql::Item& item = source_.select.items[column];
  const sql::ExprPtr wanted =
      value.isNull() ? sql::make(sql::IsNull{item.expr, false})
                     : sql::binary(sql::Op::Equal, item.expr, sql::make(sql::Literal{value.as(item.type)}));
  bool exhausted = false;
  std::vector<Row> rows = fetch(wanted, false, 1, exhausted);
  std::optional<Row> best;
  if (!rows.empty()) best = std::move(rows.front());
  for (const auto& [rid, change] : changes_)
    if (change.row && visible(*change.row) && change.row->values[column] == value &&
        (!best || before(change.key, best->key)))
      best = *change.row;
  if (best) {
    pageSize_ = 0;
    return loadPage(best->key, true, false);
  }
  const std::vector<Row> own = ownRows();
  for (std::size_t i = 0; i < own.size(); ++i)
    if (visible(own[i]) && own[i].values[column] == value) return where_ = Where::Own, at_ = i, true;
  return false;
}

// --- Newer versions
// ---------------------------------------------------------------------------------------------

void TableCursor::refresh(std::shared_ptr<const Snapshot> newer) {
  if (!ceiling_) {
    sql::Select highest = source_.select;
    highest.items = {
        {sql::make(sql::Call{sql::Aggregate::Max, sql::rid(table_)}), "rid", FieldType::Integer}};
    highest.updatable = false;
    highest.where = nullptr;
    highest.orderBy.clear();
    const auto rows = source_.snapshot->query(highest);
    const Value rid = rows->next() ? rows->value(0) : Value();
    ceiling_ = rid.isNull() ? 0 : rid.toInteger();
  }
  if (where_ == Where::Aside) {
    where_ = Where::Lost;
  } else if (where_ == Where::Page || where_ == Where::Own) {
    aside_.reset();
    if (settle()) {
      lost_ = current().key;
      lostRow_ = current().rid;
      where_ = Where::Lost;
    } else {
      where_ = Where::Unread;
    }
  }
  source_.snapshot = std::move(newer);
  changes_.clear();
  ownRead_.clear();
  page_.clear();
  list_.reset();
  listRead_.clear();
}

void TableCursor::renew(Store& store) {
  if (source_.snapshot->latest() || !source_.snapshot->unchanged(tables_)) return;
  source_.snapshot = store.snapshot();
}

// --- Writing
// ----------------------------------------------------------------------------------------------------

namespace {
FieldValues named(const sql::Select& select, const Cursor::Written& fields) {
  FieldValues values;
  for (const auto& [column, value] : fields) values.emplace_back(select.items[column].name, value);
  return values;
}
}  // namespace

void TableCursor::insert(Store& store, const Written& fields) {
  ownRows();  // whatever has to be read is read before anything is written
  const RowId rid = store.insert(table_, named(source_.select, fields));
  Row row;
  row.rid = rid;
  row.values.resize(source_.select.items.size());
  row.unread.assign(row.values.size(), false);
  if (const TableInfo* info = source_.catalog->find(table_))
    for (std::size_t i = 0; i < row.values.size(); ++i)
      if (const ColumnInfo* column = info->find(source_.select.items[i].name))
        row.values[i] = column->defaultValue;
  for (const auto& [column, value] : fields) row.values[column] = value;
  row.key = keyOf(row.values, rid);
  own_.push_back(rid);
  where_ = Where::Own;
  at_ = own_.size() - 1;
  ownRead_[rid] = row;
  afterWrite(row);
  if (!list_ || !list_->whole || !visible(row)) return;
  list_->rids.push_back(rid);
  ++list_->own;
}

void TableCursor::update(Store& store, const Written& fields) {
  Row row = current();
  store.update(table_, row.rid, named(source_.select, fields));
  for (const auto& [column, value] : fields) {
    row.values[column] = value;
    row.unread[column] = false;
  }
  current() = row;
  if (isOwn(row.rid))
    ownRead_[row.rid] = row;
  else
    changes_[row.rid] = Change{row, row.key};
  afterWrite(row);
}

void TableCursor::erase(Store& store) {
  const Row row = current();
  store.erase(table_, row.rid);
  unlist(row.rid);
  aside_.reset();
  if (isOwn(row.rid)) {
    const std::size_t index = ownIndex(row.rid);
    own_.erase(own_.begin() + static_cast<std::ptrdiff_t>(index));
    ownRead_.erase(row.rid);
    if (!ownNext(index) && !ownPrior(index) && !loadPage(std::nullopt, true, true)) where_ = Where::Unread;
    return;
  }
  changes_[row.rid] = Change{std::nullopt, row.key};
  if (where_ == Where::Page) {
    page_.erase(page_.begin() + static_cast<std::ptrdiff_t>(at_));
    if (at_ < page_.size()) return;
  }
  pageSize_ = 0;
  page_.clear();
  if (!loadPage(row.key, false, false) && !ownNext(0) && !loadPage(row.key, false, true))
    where_ = Where::Unread;
}

/// The row just written stays current, also where the filter hides it.
void TableCursor::afterWrite(const Row& row) {
  listRead_.erase(row.rid);
  const bool wasAside = where_ == Where::Aside;
  if (visible(row) && !wasAside) return;
  lost_ = row.key;
  lostRow_ = row.rid;
  if (visible(row)) {
    aside_.reset();
    list_.reset();
    where_ = Where::Lost;
    return;
  }
  unlist(row.rid);
  aside_ = row;
  where_ = Where::Aside;
}

}  // namespace tavoline
