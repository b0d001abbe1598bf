#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/PassingStore.h"

namespace tavoline::test {

std::string literal(const Value& value);  ///< As SQLite reads it.
/// An insert of the journal with the number of its row.
std::string withRow(const std::string& write, const std::string& row);

/// A store that tells a pipe of every write: as a statement before it is asked for, and once it is
/// acknowledged or refused.
class Journal : public PassingStore {
 public:
  Journal(std::shared_ptr<Store> inner, int pipe) : PassingStore(std::move(inner)), pipe_(pipe) {}

 protected:
  void passWrite(const Request& request, const std::function<RowId()>& pass) override;

 private:
  std::string statement(const Request& request) const;

  int pipe_;
};

/// The other end: what was acknowledged, in order, and what was asked for since the last of those.
class JournalReader {
 public:
  /// Takes bytes as they came from the pipe; a line cut short by the writer's death counts for nothing.
  void take(std::string_view bytes);

  std::vector<std::string> acknowledged;
  /// One of these may have been done. A refused write is among them: a disk that could not keep it may hold
  /// it all the same, and only the next write goes over it.
  std::vector<std::string> uncertain;
  bool diedWriting() const { return underWay_; }
  std::size_t refused = 0;     ///< Writes that the store did not do.
  std::size_t afterwards = 0;  ///< Acknowledged ones that came straight behind a refused one.

 private:
  void line(const std::string& text);
  std::string rest_;
  bool underWay_ = false, lastRefused_ = false;
};

}  // namespace tavoline::test
