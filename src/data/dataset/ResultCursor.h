#pragma once

#include "data/dataset/Cursor.h"

namespace tavoline {

/// A read-only result (joins, groups, aggregates, chosen columns): rows are streamed in batches and kept.
class ResultCursor : public Cursor {
 public:
  explicit ResultCursor(CursorSource source);

  void filter(const sql::ExprPtr& filter) override;
  bool first() override { return moveTo(0); }
  bool last() override;
  bool next() override { return moveTo(at_ + 1); }
  bool prior() override { return at_ > 0 && moveTo(at_ - 1); }
  bool onRow() override { return read(at_); }
  Value value(std::size_t column) override;
  std::vector<Value> values() override;
  std::size_t count() override;
  Value valueAt(std::size_t record, std::size_t column) override;
  int record() override { return onRow() ? static_cast<int>(at_) : -1; }
  bool moveTo(std::size_t record) override;
  bool locate(std::size_t column, const Value& value) override;
  void refresh(std::shared_ptr<const Snapshot> newer) override;
  void renew(Store& store) override;

 private:
  bool read(std::size_t record);  // whether there is such a row, streaming up to it
  void rewind();

  CursorSource source_;
  sql::Select narrowed_;
  std::vector<std::string> tables_;
  std::unique_ptr<Rows> stream_;
  bool started_ = false, ended_ = false;
  std::vector<std::vector<Value>> rows_;
  std::size_t at_ = 0;
};

}  // namespace tavoline
