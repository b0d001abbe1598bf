#include "data/dataset/TableCursor.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "data/sql/Resolver.h"

namespace tavoline {

namespace {
constexpr std::size_t kFirstPage = 4;  // most questions are about one row
constexpr std::size_t kLargestPage = 128;
constexpr RowId kBehindAll = std::numeric_limits<RowId>::max();
}  // namespace

TableCursor::TableCursor(CursorSource source)
    : pages_(std::move(source)), own_(pages_.order(), pages_.columns()) {}

void TableCursor::filter(const sql::ExprPtr& filter) {
  sql::ExprPtr inMemory = sql::resolveFilter(filter, pages_.columns());
  pages_.filter(filter);
  own_.filter(std::move(inMemory));
  list_.reset();
  page_.clear();
  aside_.reset();
  where_ = Where::Unread;
}

/// What was written here; after a refresh its inserted rows are read again before anything is asked of them.
OwnWrites& TableCursor::own() {
  if (own_.aged()) own_.reread(pages_.find(own_.insertedRows()));
  return own_;
}

// --- The position
// -----------------------------------------------------------------------------------------------

bool TableCursor::first() {
  pageSize_ = 0;
  if (load({}) || stand(own().firstFrom(0))) return true;
  where_ = Where::None;
  return false;
}

bool TableCursor::last() {
  pageSize_ = 0;
  if (stand(own().lastBefore(kBehindAll)) || load({.from = {}, .inclusive = true, .backwards = true}))
    return true;
  where_ = Where::None;
  return false;
}

bool TableCursor::next() {
  if (!settle()) return false;
  switch (where_) {
    case Where::Own:
      return stand(own().firstFrom(ownAt_ + 1));
    case Where::Aside:
      pageSize_ = 0;
      if (lostOwn_) return stand(own().firstFrom(lostRow_ + 1));
      return load({.from = lost_, .inclusive = false}) || stand(own().firstFrom(0));
    default:
      if (at_ + 1 < page_.size()) return ++at_, true;
      if (!pageEnd_ && load({.from = page_[at_].key, .inclusive = false})) return true;
      pageEnd_ = true;
      return stand(own().firstFrom(0));
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
    return stand(own().lastBefore(aside ? lostRow_ : ownAt_)) ||
           load({.from = {}, .inclusive = true, .backwards = true});
  if (at_ > 0) return --at_, true;
  return !pageStart_ && load({.from = page_[at_].key, .inclusive = false, .backwards = true});
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
  if (aside_) {
    const TableRow* written = own().find(lostRow_);
    std::vector<TableRow> read;
    if (!written) read = pages_.find({lostRow_});
    if (!read.empty()) written = &read.front();
    if (written && !own_.visible(*written)) {
      aside_ = *written;
      where_ = Where::Aside;
      return true;
    }
  }
  RowKey key = lost_;
  if (!lostOwn_ && !pages_.order().byInsertion() && !own_.changed(lostRow_)) {
    const std::vector<TableRow> row =
        pages_.find({lostRow_});  // a newer version may show it at another place
    if (!row.empty()) key = row.front().key;
  }
  const bool found = lostOwn_ ? stand(own().firstFrom(lostRow_)) || stand(own().lastBefore(lostRow_)) ||
                                    load({.from = {}, .inclusive = true, .backwards = true})
                              : load({.from = key}) || stand(own().firstFrom(0)) ||
                                    load({.from = key, .inclusive = false, .backwards = true});
  if (!found) where_ = Where::None;
  return found;
}

/// Where the current row is; it may be gone, or hidden.
void TableCursor::lose(const TableRow& row) {
  lostOwn_ = own_.inserted(row.rid);
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
  return where_ == Where::Own ? *own().find(ownAt_) : page_.at(at_);
}

Value TableCursor::value(std::size_t column) {
  return pages_.fetched(current(), column);
}

std::vector<Value> TableCursor::values() {
  return current().values;
}

// --- Pages
// ------------------------------------------------------------------------------------------------------

/// Makes the page read the page at hand and stands on its first row in the direction of reading.
bool TableCursor::load(const Reading& reading) {
  bool exhausted = false;
  std::vector<TableRow> rows = page(reading, exhausted);
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

/// The next rows of a reading, larger pages as one moves on.
std::vector<TableRow> TableCursor::page(Reading reading, bool& exhausted) {
  pageSize_ = std::clamp(pageSize_ * 2, kFirstPage, kLargestPage);
  if (pages_.order().byInsertion()) {
    if (own_.filtered() && pageSize_ == kLargestPage) list().count();  // someone walks through them all
    if (list_ && list_->whole()) return listedPage(reading, exhausted);
  }
  // A page of nothing but changed or foreign rows says nothing about what follows: read on behind it.
  for (std::size_t limit = pageSize_;; limit = std::min(2 * limit, kLargestPage)) {
    TablePages::Page read = pages_.read(reading, limit);
    exhausted = read.exhausted;
    std::vector<TableRow> rows =
        own_.laidOver(std::move(read.rows), reading, exhausted ? nullptr : &read.end);
    if (!rows.empty() || exhausted) return rows;
    reading.from = std::move(read.end);
    reading.inclusive = false;
  }
}

/// The same from the list, where there is one: a filter's index is in another order than the rows, and every
/// page would begin with sorting all that it finds.
std::vector<TableRow> TableCursor::listedPage(const Reading& reading, bool& exhausted) {
  std::vector<RowId> unchanged;
  std::vector<TableRow> rows;
  for (const RowId rid : list_->page(reading, pageSize_, exhausted))
    if (const TableRow* changed = own_.find(rid))
      rows.push_back(*changed);
    else
      unchanged.push_back(rid);
  std::ranges::move(pages_.find(unchanged), std::back_inserter(rows));
  std::ranges::sort(rows, {}, &TableRow::rid);
  if (reading.backwards) std::ranges::reverse(rows);
  return rows;
}

/// The first visible row that holds the value.
std::optional<TableRow> TableCursor::search(std::size_t column, const Value& value) {
  const sql::Item& item = pages_.columns()[column];
  const sql::ExprPtr wanted = value.isNull()
                                  ? sql::make(sql::IsNull{item.expr, false})
                                  : sql::binary(sql::Op::Equal, item.expr, sql::make(sql::Literal{value}));
  std::optional<TableRow> best;
  Reading reading;
  for (std::size_t limit = 1; !best; limit = std::min(4 * limit, kLargestPage)) {
    TablePages::Page read = pages_.read(reading, limit, wanted);
    for (TableRow& row : read.rows)
      if (!best && !own_.changed(row.rid)) best = std::move(row);
    if (read.exhausted) break;
    reading = {.from = std::move(read.end), .inclusive = false};
  }
  for (const TableRow* row : own_.changedRows())
    if (row->values[column] == value && (!best || pages_.order().before(row->key, best->key))) best = *row;
  for (auto rid = own().firstFrom(0); rid && !best; rid = own_.firstFrom(*rid + 1))
    if (const TableRow* row = own_.find(*rid); row->values[column] == value) best = *row;
  return best;
}

bool TableCursor::locate(std::size_t column, const Value& value) {
  const std::optional<TableRow> row = search(column, value);
  if (!row) return false;
  if (own_.inserted(row->rid)) return stand(row->rid);
  pageSize_ = 0;
  return load({.from = row->key});
}

int TableCursor::recordOf(std::size_t column, const Value& value) {
  const std::optional<TableRow> row = search(column, value);
  if (!row) return -1;
  const auto place = list().placeOf(row->rid);
  return place ? static_cast<int>(*place) : -1;
}

// --- Rows by number
// ---------------------------------------------------------------------------------------------

namespace {
constexpr std::size_t kStretch = 64;
constexpr std::size_t kKeptByNumber = 1024;
}  // namespace

RowList& TableCursor::list() {
  own();
  if (!list_) list_.emplace(pages_, own_);
  return *list_;
}

std::size_t TableCursor::count() {
  return list().count();
}

std::size_t TableCursor::counted() {
  return list().counted();
}

bool TableCursor::countOn(std::size_t rows) {
  return list().countOn(rows);
}

TableRow& TableCursor::rowAt(std::size_t record) {
  const RowId rid = (*list_)[record];
  if (TableRow* written = own().find(rid)) return *written;
  if (const auto read = listRead_.find(rid); read != listRead_.end()) return read->second;
  if (listRead_.size() > kKeptByNumber) listRead_.clear();
  for (TableRow& row : pages_.find(list_->stretch(record, kStretch)))
    listRead_.insert_or_assign(row.rid, std::move(row));
  return listRead_.at(rid);
}

Value TableCursor::valueAt(std::size_t record, std::size_t column) {
  return list().has(record) ? pages_.fetched(rowAt(record), column) : Value();
}

int TableCursor::record() {
  if (!settle() || where_ == Where::Aside) return -1;
  const auto place = list().placeOf(current().rid);
  return place ? static_cast<int>(*place) : -1;
}

bool TableCursor::moveTo(std::size_t record) {
  if (!list().has(record)) return false;
  const TableRow& row = rowAt(record);
  if (own_.inserted(row.rid)) return stand(row.rid);
  page_.assign(1, row);
  pageStart_ = pageEnd_ = false;
  pageSize_ = 0;
  at_ = 0;
  where_ = Where::Page;
  aside_.reset();
  return true;
}

// --- Newer versions
// ---------------------------------------------------------------------------------------------

/// Where rows stand in the order of insertion, those inserted here stand among the others from now on. In
/// another order they stay behind the last.
void TableCursor::refresh(std::shared_ptr<const Snapshot> newer) {
  if (where_ == Where::Page || where_ == Where::Own || where_ == Where::Aside) lose(current());
  if (where_ == Where::None) where_ = Where::Unread;
  const bool joining = pages_.order().byInsertion();
  pages_.moveOn(std::move(newer), joining ? own_.insertedRows() : std::vector<RowId>());
  joining ? own_.clear() : own_.age();
  if (joining) lostOwn_ = false;
  page_.clear();
  list_.reset();
  listRead_.clear();
}

void TableCursor::renew(Store& store) {
  pages_.renew(store);
}

// --- Writing
// ----------------------------------------------------------------------------------------------------
// Whatever has to be read is read before anything is written: what is written stays written.

namespace {
FieldValues named(const TablePages& pages, const Cursor::Written& fields) {
  FieldValues values;
  for (const auto& [column, value] : fields) values.emplace_back(pages.columns()[column].name, value);
  return values;
}
}  // namespace

void TableCursor::insert(Store& store, const Written& fields) {
  own();
  TableRow row;
  row.rid = store.insert(pages_.table(), named(pages_, fields));
  row.values.resize(pages_.columns().size());
  if (const TableInfo* info = pages_.catalog().find(pages_.table()))
    for (std::size_t i = 0; i < row.values.size(); ++i)
      if (const ColumnInfo* column = info->find(pages_.columns()[i].name))
        row.values[i] = column->defaultValue;
  for (const auto& [column, value] : fields) row.values[column] = value;
  row.key = pages_.order().keyOf(row.values, row.rid);
  own_.insert(row);
  stand(row.rid);
  if (list_) list_->add(row.rid);
  written(row);
}

void TableCursor::update(Store& store, const Written& fields) {
  TableRow row = current();
  store.update(pages_.table(), row.rid, named(pages_, fields));
  for (const auto& [column, value] : fields) {
    row.values[column] = value;
    if (!row.unread.empty()) row.unread[column] = false;
  }
  current() = row;
  own_.change(row);
  written(row);
}

/// The row just written stays current, also where the filter hides it.
void TableCursor::written(const TableRow& row) {
  listRead_.erase(row.rid);
  const bool wasAside = where_ == Where::Aside;
  if (own_.visible(row)) {
    if (!wasAside) return;
    aside_.reset();
    list_.reset();
    return lose(row);
  }
  if (list_) list_->remove(row.rid);
  lose(row);
  aside_ = row;
  where_ = Where::Aside;
}

void TableCursor::erase(Store& store) {
  const TableRow row = current();
  store.erase(pages_.table(), row.rid);
  listRead_.erase(row.rid);
  if (list_) list_->remove(row.rid);
  const bool inPage = where_ == Where::Page;
  lose(row);
  own_.erase(row);
  aside_.reset();
  if (!inPage) return;
  page_.erase(page_.begin() + static_cast<std::ptrdiff_t>(at_));
  if (at_ < page_.size()) where_ = Where::Page;
}

}  // namespace tavoline
