#include "data/dataset/TableCursor.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace tavoline {

namespace {
constexpr std::size_t kFirstPage = 4;  // most questions are about one row
constexpr std::size_t kLargestPage = 128;
constexpr RowId kBehindAll = std::numeric_limits<RowId>::max();
const Reading kFromTheEnd{.from = {}, .inclusive = true, .backwards = true};
}  // namespace

void TableCursor::filter(const sql::ExprPtr& filter) {
  rows_.filter(filter);
  page_.clear();
  aside_.reset();
  where_ = Where::Unread;
}

// --- The position
// -----------------------------------------------------------------------------------------------

bool TableCursor::first() {
  pageSize_ = 0;
  if (load({}) || stand(rows_.own().firstFrom(0))) return true;
  return none();
}

bool TableCursor::last() {
  pageSize_ = 0;
  if (stand(rows_.own().lastBefore(kBehindAll)) || load(kFromTheEnd)) return true;
  return none();
}

bool TableCursor::next() {
  if (!settle()) return false;
  switch (where_) {
    case Where::Own:
      return stand(rows_.own().firstFrom(ownAt_ + 1));
    case Where::Aside:
      pageSize_ = 0;
      if (lostOwn_) return stand(rows_.own().firstFrom(lostRow_ + 1));
      return load({.from = lost_, .inclusive = false}) || stand(rows_.own().firstFrom(0));
    default:
      if (at_ + 1 < page_.size()) return ++at_, true;
      if (!pageEnd_ && load({.from = page_[at_].key, .inclusive = false})) return true;
      pageEnd_ = true;
      return stand(rows_.own().firstFrom(0));
  }
}

bool TableCursor::prior() {
  if (!settle()) return false;
  const bool aside = where_ == Where::Aside;
  if (aside && !lostOwn_) {
    pageSize_ = 0;
    return load({.from = lost_, .inclusive = false, .backwards = true});
  }
  if (aside || where_ == Where::Own)
    return stand(rows_.own().lastBefore(aside ? lostRow_ : ownAt_)) || load(kFromTheEnd);
  if (at_ > 0) return --at_, true;
  return !pageStart_ && load({.from = page_[at_].key, .inclusive = false, .backwards = true});
}

std::optional<RowId> TableCursor::standing() const {
  switch (where_) {
    case Where::Page:
      return page_[at_].rid;
    case Where::Own:
      return ownAt_;
    case Where::Aside:
      return lostRow_;
    default:
      return std::nullopt;
  }
}

/// Finds the current row if the position is not read yet, or its row may have gone.
bool TableCursor::settle() {
  if (where_ == Where::Unread) return first();
  if (where_ == Where::Lost) return settleAfterLoss();
  return where_ != Where::None;
}

/// The row itself if it is still there, and visible or aside; else the next; else the one before; else none.
bool TableCursor::settleAfterLoss() {
  pageSize_ = 0;
  RowKey key = lost_;
  if (aside_ || (!lostOwn_ && !rows_.pages().order().byInsertion())) {
    const std::optional<TableRow> row = rows_.find(lostRow_);
    if (row && aside_ && !rows_.own().visible(*row)) {
      aside_ = row;
      where_ = Where::Aside;
      return true;
    }
    if (row) key = row->key;  // a newer version may show it at another place
  }
  const Reading backFrom{.from = key, .inclusive = false, .backwards = true};
  const bool found = lostOwn_ ? stand(rows_.own().firstFrom(lostRow_)) ||
                                    stand(rows_.own().lastBefore(lostRow_)) || load(kFromTheEnd)
                              : load({.from = key}) || stand(rows_.own().firstFrom(0)) || load(backFrom);
  return found || none();
}

bool TableCursor::none() {
  where_ = Where::None;
  aside_.reset();
  return false;
}

/// Where the current row is; it may be gone, or hidden.
void TableCursor::lose(const TableRow& row) {
  lostOwn_ = rows_.own().inserted(row.rid);
  lostRow_ = row.rid;
  lost_ = row.key;
  where_ = Where::Lost;
}

bool TableCursor::stand(std::optional<RowId> inserted) {
  if (!inserted) return false;
  where_ = Where::Own;
  ownAt_ = *inserted;
  aside_.reset();
  return true;
}

TableRow& TableCursor::current() {
  if (where_ == Where::Aside) return *aside_;
  return where_ == Where::Own ? *rows_.own().find(ownAt_) : page_.at(at_);
}

Value TableCursor::value(std::size_t column) {
  return rows_.pages().fetched(current(), column);
}

/// Makes the page read the page at hand and stands on its first row in the direction of reading.
bool TableCursor::load(const Reading& reading) {
  pageSize_ = std::clamp(pageSize_ * 2, kFirstPage, kLargestPage);  // larger ones as one moves on
  auto [rows, exhausted] = rows_.read(reading, pageSize_);
  if (rows.empty()) return false;
  if (reading.backwards) std::ranges::reverse(rows);
  page_.assign(std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
  at_ = reading.backwards ? page_.size() - 1 : 0;
  pageStart_ = reading.backwards ? exhausted : !reading.from;
  pageEnd_ = reading.backwards ? !reading.from : exhausted;
  where_ = Where::Page;
  aside_.reset();
  return true;
}

// --- Rows by number
// ---------------------------------------------------------------------------------------------

Value TableCursor::valueAt(std::size_t record, std::size_t column) {
  return rows_.list().has(record) ? rows_.pages().fetched(rows_.at(record), column) : Value();
}

int TableCursor::record() {
  return settle() && where_ != Where::Aside ? recordOf(current().rid) : -1;
}

int TableCursor::recordOf(RowId rid) {
  const auto place = rows_.list().placeOf(rid);
  return place ? static_cast<int>(*place) : -1;
}

bool TableCursor::moveTo(std::size_t record) {
  if (!rows_.list().has(record)) return false;
  const TableRow& row = rows_.at(record);
  if (rows_.own().inserted(row.rid)) return stand(row.rid);
  page_.assign(1, row);
  pageStart_ = pageEnd_ = false;
  pageSize_ = 0;
  at_ = 0;
  where_ = Where::Page;
  aside_.reset();
  return true;
}

bool TableCursor::locate(std::size_t column, const Value& value) {
  const std::optional<TableRow> row = rows_.search(column, value);
  if (!row) return false;
  if (rows_.own().inserted(row->rid)) return stand(row->rid);
  pageSize_ = 0;
  return load({.from = row->key});
}

int TableCursor::recordOf(std::size_t column, const Value& value) {
  const std::optional<TableRow> row = rows_.search(column, value);
  return row ? recordOf(row->rid) : -1;
}

void TableCursor::refresh(std::shared_ptr<const Snapshot> newer) {
  if (where_ == Where::Page || where_ == Where::Own || where_ == Where::Aside) lose(current());
  if (where_ == Where::None) where_ = Where::Unread;
  if (rows_.refresh(std::move(newer))) lostOwn_ = false;
  page_.clear();
}

void TableCursor::release(const std::shared_ptr<const Snapshot>& newest) {
  std::vector<const TableRow*> inSight;
  inSight.reserve(page_.size() + 1);
  for (const TableRow& row : page_) inSight.push_back(&row);
  if (aside_) inSight.push_back(&*aside_);
  rows_.release(newest, inSight);
}

// --- Writing
// ----------------------------------------------------------------------------------------------------
// Whatever has to be read is read before anything is written: what is written stays written. The row just
// written stays current, also where the filter hides it.

FieldValues TableCursor::named(const Written& fields) const {
  FieldValues values;
  for (const auto& [column, value] : fields) values.emplace_back(rows_.pages().columns()[column].name, value);
  return values;
}

void TableCursor::insert(Store& store, const Written& fields) {
  rows_.own();
  const TablePages& pages = rows_.pages();
  TableRow row;
  row.rid = store.insert(pages.table(), named(fields));
  row.values.resize(pages.columns().size());
  if (const TableInfo* info = pages.catalog().find(pages.table()))
    for (std::size_t i = 0; i < row.values.size(); ++i)
      if (const ColumnInfo* column = info->find(pages.columns()[i].name))
        row.values[i] = column->defaultValue;
  for (const auto& [column, value] : fields) row.values[column] = value;
  row.key = pages.order().keyOf(row.values, row.rid);
  rows_.insert(row);
  stand(row.rid);
  stayOn(row);
}

void TableCursor::update(Store& store, const Written& fields) {
  TableRow row = current();
  store.update(rows_.pages().table(), row.rid, named(fields));
  for (const auto& [column, value] : fields) {
    row.values[column] = value;
    if (!row.unread.empty()) row.unread[column] = false;
  }
  current() = row;
  rows_.change(row, where_ == Where::Aside);
  stayOn(row);
}

void TableCursor::stayOn(const TableRow& row) {
  const bool visible = rows_.own().visible(row);
  if (visible && where_ != Where::Aside) return;
  lose(row);
  aside_.reset();
  if (visible) return;
  aside_ = row;
  where_ = Where::Aside;
}

void TableCursor::erase(Store& store) {
  const TableRow row = current();
  store.erase(rows_.pages().table(), row.rid);
  const bool inPage = where_ == Where::Page;
  lose(row);
  rows_.erase(row);
  aside_.reset();
  if (!inPage) return;
  page_.erase(page_.begin() + static_cast<std::ptrdiff_t>(at_));
  if (at_ < page_.size()) where_ = Where::Page;
}

}  // namespace tavoline
