#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/store/Store.h"

namespace tavoline::test {

/// What one write asks of the store, as it goes over a pipe to who will check it.
struct Write {
  enum class Kind { Insert, Update, Erase };
  Kind kind = Kind::Update;
  std::string table;
  RowId row = 0;  ///< 0 for an insert that is not acknowledged yet.
  /// Columns and their values, as the engine writes a literal.
  std::vector<std::pair<std::string, std::string>> fields;
};

/// A store that tells a pipe of every write: before it is asked for, and once it is acknowledged or refused.
class Journal : public Store {
 public:
  Journal(std::shared_ptr<Store> inner, int pipe) : inner_(std::move(inner)), pipe_(pipe) {}

  const Catalog& catalog() const override { return inner_->catalog(); }
  std::shared_ptr<const Snapshot> snapshot() override { return inner_->snapshot(); }
  RowId insert(const std::string& table, const FieldValues& fields) override;
  void update(const std::string& table, RowId row, const FieldValues& fields) override;
  void erase(const std::string& table, RowId row) override;
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override;
  void idle() override { inner_->idle(); }

 private:
  void asked(const Write& write);
  void answered(const char* how, RowId row);
  template <class Action>
  RowId told(const Write& write, const Action& action);
  Write written(Write::Kind kind, const std::string& table, RowId row, const FieldValues& fields) const;

  std::shared_ptr<Store> inner_;
  int pipe_;
};

/// The other end: what was acknowledged, in order, and what was asked for since the last of those.
class JournalReader {
 public:
  /// Takes bytes as they came from the pipe; a line cut short by the writer's death counts for nothing.
  void take(std::string_view bytes);

  std::vector<Write> acknowledged;
  /// One of these may have been done. A refused write is among them: a disk that could not keep it may hold
  /// it all the same, and only the next write goes over it.
  std::vector<Write> uncertain;
  bool diedWriting() const { return underWay_; }
  std::size_t refused = 0;     ///< Writes that the store did not do.
  std::size_t afterwards = 0;  ///< Acknowledged ones that came straight behind a refused one.

 private:
  void line(const std::string& text);
  void answer(const std::vector<std::string>& parts);
  std::string rest_;
  bool underWay_ = false, lastRefused_ = false;
};

}  // namespace tavoline::test
