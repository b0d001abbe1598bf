#pragma once

#include <memory>
#include <optional>
#include <string>

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

/// A store that tells a pipe of every write: before it is asked for, and once it is acknowledged.
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
  void acknowledged(RowId row);
  Write written(Write::Kind kind, const std::string& table, RowId row, const FieldValues& fields) const;

  std::shared_ptr<Store> inner_;
  int pipe_;
};

/// The other end: what was acknowledged, in order, and what was asked for and may or may not have been done.
class JournalReader {
 public:
  /// Takes bytes as they came from the pipe; a line cut short by the writer's death counts for nothing.
  void take(std::string_view bytes);

  std::vector<Write> acknowledged;
  std::optional<Write> underWay;

 private:
  void line(const std::string& text);
  std::string rest_;
};

}  // namespace tavoline::test
