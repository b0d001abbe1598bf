#include "data/dataset/TableRows.h"

#include <algorithm>
#include <iterator>

#include "data/sql/Resolver.h"

namespace tavoline {

namespace {
constexpr std::size_t kWalking = 128;  // pages as large as this are read by who walks through all rows
constexpr std::size_t kStretch = 64;   // read together, for those who ask by number
constexpr std::size_t kKeptByNumber = 1024;
}  // namespace

TableRows::TableRows(CursorSource source)
    : pages_(std::move(source)), own_(pages_.order(), pages_.columns()) {}

void TableRows::filter(const sql::ExprPtr& filter) {
  sql::ExprPtr inMemory = sql::resolveFilter(filter, pages_.columns());
  pages_.filter(filter);
  own_.filter(std::move(inMemory));
  list_.reset();
}

OwnWrites& TableRows::own() {
  if (own_.aged()) own_.reread(pages_.find(own_.insertedRows()));
  return own_;
}

RowList& TableRows::list() {
  own();
  if (list_) return *list_;
  // Whoever counts will show the first rows: they come in the same question, and most lists end with them.
  TablePages::Page beginning;
  if (pages_.order().byInsertion()) beginning = pages_.read({}, kStretch);
  list_.emplace(pages_, own_, beginning);
  keep(std::move(beginning.rows));
  return *list_;
}

void TableRows::keep(std::vector<TableRow> rows) {
  if (read_.size() > kKeptByNumber) read_.clear();
  for (TableRow& row : rows) read_.insert_or_assign(row.rid, std::move(row));
}

// --- Reading
// ----------------------------------------------------------------------------------------------------

TableRows::Page TableRows::read(Reading reading, std::size_t size) {
  if (pages_.order().byInsertion()) {
    if (own_.filtered() && size >= kWalking) {
      if (!list_) list_.emplace(pages_, own());  // the first rows are long passed
      list_->count();
    }
    if (list_ && list_->whole()) return listed(reading, size);
  }
  // A page of nothing but changed or foreign rows says nothing about what follows: read on behind it.
  for (;; size = std::min(2 * size, kWalking)) {
    TablePages::Page page = pages_.read(reading, size);
    const RowKey* const end = page.exhausted ? nullptr : &page.end;
    std::vector<TableRow> rows = own_.laidOver(std::move(page.rows), reading, end);
    if (!rows.empty() || page.exhausted) return {std::move(rows), page.exhausted};
    reading.from = std::move(page.end);
    reading.inclusive = false;
  }
}

/// The same from the list, where there is one: a filter's index is in another order than the rows, and every
/// page would begin with sorting all that it finds.
TableRows::Page TableRows::listed(const Reading& reading, std::size_t size) {
  Page page;
  std::vector<RowId> unchanged;
  const std::vector<RowId> rids = list_->page(reading, size, page.exhausted);
  for (const RowId rid : rids)
    if (const TableRow* changed = own_.find(rid))
      page.rows.push_back(*changed);
    else if (const auto read = read_.find(rid); read != read_.end() && !read->second.gone)
      page.rows.push_back(read->second);
    else
      unchanged.push_back(rid);
  std::ranges::move(pages_.find(unchanged), std::back_inserter(page.rows));
  // Rows that were listed, and not read, may have gone since.
  if (page.rows.empty() && !page.exhausted) {
    const RowId end = reading.backwards ? rids.front() : rids.back();
    return listed({.from = RowKey{Value(end)}, .inclusive = false, .backwards = reading.backwards}, size);
  }
  std::ranges::sort(page.rows, {}, &TableRow::rid);
  if (reading.backwards) std::ranges::reverse(page.rows);
  return page;
}

std::optional<TableRow> TableRows::find(RowId rid) {
  if (const TableRow* written = own().find(rid)) return *written;
  if (own_.changed(rid)) return std::nullopt;
  std::vector<TableRow> found = pages_.find({rid});
  return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

std::optional<TableRow> TableRows::search(std::size_t column, const Value& value) {
  const sql::Item& item = pages_.columns()[column];
  const sql::ExprPtr wanted = value.isNull()
                                  ? sql::make(sql::IsNull{item.expr, false})
                                  : sql::binary(sql::Op::Equal, item.expr, sql::make(sql::Literal{value}));
  std::optional<TableRow> best;
  Reading reading;
  for (std::size_t limit = 1; !best; limit = std::min(4 * limit, kWalking)) {
    TablePages::Page page = pages_.read(reading, limit, wanted);
    for (TableRow& row : page.rows)
      if (!best && !own_.changed(row.rid)) best = std::move(row);
    if (page.exhausted) break;
    reading = {.from = std::move(page.end), .inclusive = false};
  }
  for (const TableRow* row : own_.changedRows())
    if (row->values[column] == value && (!best || pages_.order().before(row->key, best->key))) best = *row;
  for (auto rid = own().firstFrom(0); rid && !best; rid = own_.firstFrom(*rid + 1))
    if (const TableRow* row = own_.find(*rid); row->values[column] == value) best = *row;
  return best;
}

TableRow& TableRows::at(std::size_t record) {
  const RowId rid = (*list_)[record];
  if (TableRow* written = own().find(rid)) return *written;
  if (const auto read = read_.find(rid); read != read_.end()) return read->second;
  keep(pages_.find(list_->stretch(record, kStretch)));
  const auto read = read_.find(rid);
  return read == read_.end() ? read_.emplace(rid, pages_.gone(rid)).first->second : read->second;
}

// --- What was written
// -------------------------------------------------------------------------------------------

void TableRows::insert(TableRow row) {
  pages_.version().wrote();
  if (list_ && own_.visible(row)) list_->add(row.rid);
  own_.insert(std::move(row));
}

void TableRows::change(const TableRow& row, bool wasHidden) {
  pages_.version().wrote();
  read_.erase(row.rid);
  own_.change(row);
  if (wasHidden)
    list_.reset();  // it may come back between others
  else if (list_ && !own_.visible(row))
    list_->remove(row.rid);
}

void TableRows::erase(const TableRow& row) {
  pages_.version().wrote();
  read_.erase(row.rid);
  if (list_) list_->remove(row.rid);
  own_.erase(row);
}

// --- Newer versions
// ---------------------------------------------------------------------------------------------

bool TableRows::refresh(std::shared_ptr<const Snapshot> newer) {
  const bool joining = pages_.order().byInsertion();
  pages_.moveOn(std::move(newer), joining ? own_.insertedRows() : std::vector<RowId>());
  joining ? own_.clear() : own_.age();
  list_.reset();
  read_.clear();
  return joining;
}

void TableRows::release(const std::shared_ptr<const Snapshot>& newest,
                        const std::vector<const TableRow*>& inSight) {
  HeldVersion& version = pages_.version();
  if (!version.held() || version.is(newest)) return;
  own();
  const bool same = newest && !version.changedByOthers(*newest, {pages_.table()});
  if (!same) {
    if (const auto all = pages_.readAllIfFew()) {
      for (const TableRow& row : *all) own_.keep(row);
      pages_.neverAskAgain();
    }
    for (const TableRow* row : inSight) own_.keep(*row);
    for (const auto& [rid, row] : read_) own_.keep(row);
  }
  if (!same || version.written() > 0) pages_.settleMembers();
  if (list_) list_->countAnew();
  same ? version.moveTo(newest) : version.letGo();
}

}  // namespace tavoline
