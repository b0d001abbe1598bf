#pragma once

#include <deque>
#include <optional>

#include "data/dataset/Cursor.h"

namespace tavoline {

/// A read-only result (joins, groups, aggregates, chosen columns), streamed in batches. The last rows that
/// were passed are kept, some thousand of them; who goes back farther runs the statement anew up to there.
class ResultCursor : public Cursor {
 public:
  static constexpr std::size_t kKept = 4096;

  explicit ResultCursor(CursorSource source, std::size_t kept = kKept);

  void filter(const sql::ExprPtr& filter) override;
  bool first() override { return moveTo(0); }
  bool last() override;
  bool next() override { return moveTo(at_ + 1); }
  bool prior() override { return at_ > 0 && moveTo(at_ - 1); }
  bool onRow() override;
  Value value(std::size_t column) override { return current().at(column); }
  std::vector<Value> values() override;
  std::size_t count() override;
  bool countOn(std::size_t rows) override;
  Value valueAt(std::size_t record, std::size_t column) override;
  int record() override { return onRow() ? static_cast<int>(at_) : -1; }
  bool moveTo(std::size_t record) override;
  bool locate(std::size_t column, const Value& value) override;
  int recordOf(std::size_t column, const Value& value) override;
  /// Rows that come from rows of tables are read again, those left out that have gone. What was reckoned from
  /// many, a group or an aggregate, has no row of its own in the store and stays as it was.
  void refresh(std::shared_ptr<const Snapshot> newer) override;
  void release(const std::shared_ptr<const Snapshot>& newest) override;
  std::size_t held() const { return rows_.size(); }  ///< How many rows are in memory.

 private:
  using Row = std::vector<Value>;  // the columns, and unless reckoned the row numbers in each table

  bool kept(std::size_t record) const;
  bool read(std::size_t record);  // whether there is such a row, which then is among those kept
  void streamUpTo(std::size_t end, std::size_t keepFrom);
  void keep(const Rows& stream);
  const Row& current();
  void rewind();
  std::unique_ptr<Rows> ask() const;
  std::shared_ptr<const std::vector<Row>> readAllIfFew() const;

  CursorSource source_;
  const std::size_t kept_;
  std::vector<std::string> tables_;
  const bool reckoned_;  // by groups or aggregates
  const std::size_t columns_;
  sql::ExprPtr filter_;
  sql::Select narrowed_;
  std::shared_ptr<const std::vector<Row>> all_;      // without the filter, once its version was let go of
  std::shared_ptr<const std::vector<Row>> members_;  // row numbers as at Open, once another version is read

  std::unique_ptr<Rows> stream_;
  std::size_t streamed_ = 0;          // how many rows it has passed
  std::optional<std::size_t> count_;  // once its end was seen
  std::size_t from_ = 0;              // number of the first row kept
  std::deque<Row> rows_;
  std::size_t at_ = 0;
  std::optional<Row> aside_;  // the current row while it is not among those kept
};

}  // namespace tavoline
