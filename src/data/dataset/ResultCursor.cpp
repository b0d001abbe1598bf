#include "data/dataset/ResultCursor.h"

#include <algorithm>
#include <limits>

#include "data/dataset/GroupSlices.h"
#include "data/sql/Resolver.h"
#include "data/sql/Types.h"

namespace tavoline {

namespace {

// A look-up by key or an aggregate ends within the first batch, and so frees its snapshot at once.
constexpr std::size_t kBatch = 32;
constexpr auto kToTheEnd = std::numeric_limits<std::size_t>::max();

bool isReckoned(const sql::Select& select) {
  return !select.groupBy.empty() || std::ranges::any_of(select.items, [](const sql::Item& item) {
    return sql::containsAggregate(item.expr);
  });
}

sql::FromPtr withoutConditions(const sql::FromPtr& from) {
  if (!from->left) return from;
  return std::make_shared<const sql::From>(
      sql::From{from->table, withoutConditions(from->left), withoutConditions(from->right), nullptr});
}

/// The rows of a result again, each by the numbers of the rows that it comes from.
class RowsAgain : public Rows {
 public:
  RowsAgain(const CursorSource& source, sql::ExprPtr filter,
            std::shared_ptr<const std::vector<std::vector<Value>>> members)
      : select_(source.select),
        tables_(sql::tablesOf(select_)),
        parameters_(source.parameters),
        filter_(std::move(filter)),
        members_(std::move(members)),
        snapshot_(source.snapshot) {
    select_.from = withoutConditions(select_.from);
    select_.orderBy.clear();
  }

  bool next() override {
    while (at_ < members_->size())
      if (find((*members_)[at_++])) return true;
    return false;
  }
  Value value(std::size_t column) const override { return row_.at(column); }

 private:
  bool find(const std::vector<Value>& numbers) {
    select_.where = nullptr;
    for (std::size_t i = 0; i < tables_.size(); ++i)
      select_.where = sql::conjunction(select_.where, sql::binary(sql::Op::Equal, sql::rid(tables_[i]),
                                                                  sql::make(sql::Literal{numbers[i]})));
    const auto rows = snapshot_->query(select_, parameters_);
    if (!rows->next()) return false;
    row_.clear();
    for (std::size_t i = 0; i < select_.items.size(); ++i) row_.push_back(rows->value(i));
    return sql::holds(filter_, select_.items, row_);
  }

  sql::Select select_;
  const std::vector<std::string> tables_;
  const sql::Parameters parameters_;
  const sql::ExprPtr filter_;
  const std::shared_ptr<const std::vector<std::vector<Value>>> members_;
  const HeldVersion snapshot_;
  std::size_t at_ = 0;
  std::vector<Value> row_;
};

/// The rows of a result as they were kept.
class RowsKept : public Rows {
 public:
  RowsKept(const std::vector<sql::Item>& items, sql::ExprPtr filter,
           std::shared_ptr<const std::vector<std::vector<Value>>> all)
      : items_(items), filter_(std::move(filter)), all_(std::move(all)) {}

  bool next() override {
    while (at_ < all_->size())
      if (sql::holds(filter_, items_, (*all_)[at_++])) return true;
    return false;
  }
  Value value(std::size_t column) const override { return (*all_)[at_ - 1].at(column); }

 private:
  const std::vector<sql::Item>& items_;
  const sql::ExprPtr filter_;
  const std::shared_ptr<const std::vector<std::vector<Value>>> all_;
  std::size_t at_ = 0;
};

}  // namespace

ResultCursor::ResultCursor(CursorSource source, std::size_t kept)
    : source_(std::move(source)),
      kept_(kept),
      tables_(sql::tablesOf(source_.select)),
      reckoned_(isReckoned(source_.select)),
      columns_(source_.select.items.size()) {
  if (!reckoned_)
    for (const std::string& table : tables_)
      source_.select.items.push_back({sql::rid(table), "rid of " + table, FieldType::Integer});
  narrowed_ = source_.select;
}

void ResultCursor::filter(const sql::ExprPtr& filter) {
  sql::ExprPtr inMemory = sql::resolveFilter(filter, source_.select.items);
  narrowed_ = sql::narrowed(source_.select, filter);
  filter_ = std::move(inMemory);
  rewind();
}

// --- Streaming
// --------------------------------------------------------------------------------------------------

void ResultCursor::rewind() {
  stream_.reset();
  from_ = at_ = 0;
  count_.reset();
  rows_.clear();
  aside_.reset();
}

bool ResultCursor::kept(std::size_t record) const {
  return record >= from_ && record < from_ + rows_.size();
}

bool ResultCursor::read(std::size_t record) {
  if (kept(record)) return true;
  if (count_ && record >= *count_) return false;
  const bool behind = record < from_;
  const std::size_t end = record + (behind ? 1 : 1 + kBatch);
  const std::size_t earliest = end > kept_ ? end - kept_ : 0;
  if (record < streamed_) stream_.reset();
  streamUpTo(end, behind ? earliest : std::max(earliest, from_ + rows_.size()));
  return kept(record);
}

std::unique_ptr<Rows> ResultCursor::ask() const {
  if (all_) return std::make_unique<RowsKept>(source_.select.items, filter_, all_);
  if (members_) return std::make_unique<RowsAgain>(source_, filter_, members_);
  if (auto slices = inSlices(source_.snapshot, narrowed_, source_.parameters)) return slices;
  return source_.snapshot->query(narrowed_, source_.parameters);
}

/// Goes on to the record before `end`, or to the last, and keeps those from `keepFrom` on. A stream that
/// fails is given up, and what is kept stays.
void ResultCursor::streamUpTo(std::size_t end, std::size_t keepFrom) {
  auto stream = std::move(stream_);
  if (!stream) {
    stream = ask();
    streamed_ = 0;
  }
  for (; streamed_ < end; ++streamed_) {
    if (!stream->next()) {
      count_ = streamed_;
      return;
    }
    if (streamed_ >= keepFrom) keep(*stream);
  }
  stream_ = std::move(stream);
}

void ResultCursor::keep(const Rows& stream) {
  Row row;
  row.reserve(source_.select.items.size());
  for (std::size_t i = 0; i < source_.select.items.size(); ++i) row.push_back(stream.value(i));
  const bool follows = streamed_ == from_ + rows_.size();
  if (!aside_ && kept(at_) && (!follows || (rows_.size() == kept_ && at_ == from_)))
    aside_ = rows_[at_ - from_];  // it is given up with those that are kept
  if (!follows) {
    rows_.clear();
    from_ = streamed_;
  } else if (rows_.size() == kept_) {
    rows_.pop_front();
    ++from_;
  }
  rows_.push_back(std::move(row));
}

// --- The position
// -----------------------------------------------------------------------------------------------

/// A refresh may have left the position behind the last row.
bool ResultCursor::onRow() {
  return aside_ || read(at_) || (at_ > 0 && last());
}

bool ResultCursor::moveTo(std::size_t record) {
  if (!read(record)) return false;
  at_ = record;
  aside_.reset();
  return true;
}

bool ResultCursor::last() {
  if (!count_) streamUpTo(kToTheEnd, from_ + rows_.size());
  return *count_ > 0 && moveTo(*count_ - 1);
}

std::size_t ResultCursor::count() {
  if (!count_ && from_ == 0) streamUpTo(kept_, rows_.size());
  if (!count_) streamUpTo(kToTheEnd, kToTheEnd);
  return *count_;
}

bool ResultCursor::countOn(std::size_t rows) {
  const std::size_t end = from_ + rows_.size() + rows;
  if (!count_) from_ == 0 && end <= kept_ ? streamUpTo(end, rows_.size()) : void(count());
  return count_.has_value();
}

const ResultCursor::Row& ResultCursor::current() {
  if (aside_) return *aside_;
  read(at_);
  return rows_.at(at_ - from_);
}

std::vector<Value> ResultCursor::values() {
  std::vector<Value> row = current();
  row.resize(columns_);
  return row;
}

Value ResultCursor::valueAt(std::size_t record, std::size_t column) {
  return read(record) ? rows_[record - from_].at(column) : Value();
}

int ResultCursor::recordOf(std::size_t column, const Value& value) {
  for (std::size_t i = 0; read(i); ++i)
    if (rows_[i - from_].at(column) == value) return static_cast<int>(i);
  return -1;
}

bool ResultCursor::locate(std::size_t column, const Value& value) {
  const int record = recordOf(column, value);
  return record >= 0 && moveTo(static_cast<std::size_t>(record));
}

// --- Newer versions
// ---------------------------------------------------------------------------------------------

void ResultCursor::refresh(std::shared_ptr<const Snapshot> newer) {
  if (reckoned_) return;
  auto members = members_;
  if (!members) {
    sql::Select numbers = source_.select;
    numbers.items.erase(numbers.items.begin(), numbers.items.begin() + static_cast<std::ptrdiff_t>(columns_));
    auto all = std::make_shared<std::vector<Row>>();
    if (all_) {
      for (const Row& row : *all_)
        all->emplace_back(row.begin() + static_cast<std::ptrdiff_t>(columns_), row.end());
    } else {
      for (const auto rows = source_.snapshot->query(numbers, source_.parameters); rows->next();)
        for (std::size_t i = 0; i < tables_.size(); ++i)
          (i == 0 ? all->emplace_back() : all->back()).push_back(rows->value(i));
    }
    members = std::move(all);
  }
  CursorSource moved = source_;
  moved.snapshot.moveTo(std::move(newer));
  std::size_t position = 0;
  if (onRow()) {
    const Row mine(current().begin() + static_cast<std::ptrdiff_t>(columns_), current().end());
    const auto before =
        std::make_shared<std::vector<Row>>(members->begin(), std::ranges::find(*members, mine));
    for (RowsAgain rows(moved, filter_, before); rows.next();) ++position;
  }
  rewind();
  source_ = std::move(moved);
  members_ = std::move(members);
  all_.reset();
  at_ = position;
}

std::shared_ptr<const std::vector<ResultCursor::Row>> ResultCursor::readAllIfFew() const {
  if (members_ && members_->size() > kBatch) return nullptr;
  auto all = std::make_shared<std::vector<Row>>();
  if (members_) {
    for (RowsAgain rows(source_, nullptr, members_); rows.next();)
      for (std::size_t i = 0; i < source_.select.items.size(); ++i)
        (i == 0 ? all->emplace_back() : all->back()).push_back(rows.value(i));
    return all;
  }
  auto found = source_.snapshot->queryLittle(source_.select, source_.parameters, keptRows);
  if (!found) return nullptr;
  *all = std::move(*found);
  return all;
}

/// A stream under way is given up with its version; who reads on runs the statement anew on the same rows.
void ResultCursor::release(const std::shared_ptr<const Snapshot>& newest) {
  HeldVersion& version = source_.snapshot;
  if (!version.held() || version.is(newest)) return;
  const bool same = newest && !version.changedByOthers(*newest, tables_);
  if (!same && !all_) all_ = readAllIfFew();
  stream_.reset();
  same ? version.moveTo(newest) : version.letGo();
}

}  // namespace tavoline
