#include "data/dataset/ResultCursor.h"

#include "data/sql/Resolver.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {
// A look-up by key or an aggregate ends within the first batch, and so frees its snapshot at once.
constexpr std::size_t kBatch = 32;
}  // namespace

ResultCursor::ResultCursor(CursorSource source)
    : source_(std::move(source)), narrowed_(source_.select), tables_(sql::tablesOf(source_.select)) {}

void ResultCursor::rewind() {
  stream_.reset();
  rows_.clear();
  started_ = ended_ = false;
  at_ = 0;
}

void ResultCursor::filter(const sql::ExprPtr& filter) {
  narrowed_ = sql::narrowed(source_.select, filter);
  rewind();
}

bool ResultCursor::read(std::size_t record) {
  if (record < rows_.size()) return true;
  if (!started_) {
    stream_ = source_.snapshot->query(narrowed_, source_.parameters);
    started_ = true;
  }
  const std::size_t columns = narrowed_.items.size();
  for (const std::size_t goal = record + kBatch; !ended_ && rows_.size() <= goal;) {
    if (!stream_->next()) {
      ended_ = true;
      stream_.reset();
      break;
    }
    auto& row = rows_.emplace_back();
    row.reserve(columns);
    for (std::size_t i = 0; i < columns; ++i) row.push_back(stream_->value(i));
  }
  return record < rows_.size();
}

bool ResultCursor::moveTo(std::size_t record) {
  if (!read(record)) return false;
  at_ = record;
  return true;
}

bool ResultCursor::last() {
  const std::size_t n = count();
  return n > 0 && moveTo(n - 1);
}

std::size_t ResultCursor::count() {
  while (read(rows_.size())) {
  }
  return rows_.size();
}

Value ResultCursor::value(std::size_t column) {
  return rows_.at(at_).at(column);
}

std::vector<Value> ResultCursor::values() {
  return rows_.at(at_);
}

Value ResultCursor::valueAt(std::size_t record, std::size_t column) {
  return read(record) ? rows_[record].at(column) : Value();
}

bool ResultCursor::locate(std::size_t column, const Value& value) {
  for (std::size_t i = 0; read(i); ++i)
    if (rows_[i].at(column) == value) return moveTo(i);
  return false;
}

void ResultCursor::refresh(std::shared_ptr<const Snapshot> newer) {
  const std::size_t at = at_;
  rewind();
  source_.snapshot = std::move(newer);
  if (!moveTo(at)) last();
}

void ResultCursor::renew(Store& store) {
  // A stream under way stays on the version it was begun on; all other rows are still the same in a newer
  // one.
  if (stream_ || !source_.snapshot || source_.snapshot->latest()) return;
  if (source_.snapshot->unchanged(tables_)) source_.snapshot = store.snapshot();
}

}  // namespace tavoline
