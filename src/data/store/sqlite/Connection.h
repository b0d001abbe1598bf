#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "data/store/sqlite/Statement.h"

namespace tavoline::sqlite {

/// One connection to the store's file, with its prepared statements. Waits a few seconds for another process
/// that holds the file. One thread. Every failure is a StoreError with a sentence.
class Connection {
 public:
  enum class Role {
    Reader,    ///< Reads only.
    Writer,    ///< Reads and writes.
    Maker,     ///< The same, and makes the file where there is none; alone may do so.
    Observer,  ///< Changes nothing, neither the file nor what stands beside it, and lets everybody else
               ///< write.
  };

  /// `path` is where the file itself stands, links followed; `name` is what sentences call it.
  Connection(const std::string& path, std::string name, Role role);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Text with its values in place of ?1, ?2...; prepared once, as long as it is among those used lately.
  Statement prepare(const std::string& text);
  void run(const std::string& text);              ///< Steps to the end.
  void execute(const std::string& statements);    ///< Any number of them, prepared for this time only.
  std::int64_t integer(const std::string& text);  ///< First column of the first row; 0 if there is none.
  std::string text(const std::string& text);      ///< The same as text; empty if there is none.
  void close();  ///< Throws if the engine could not finish its work. Statements have to be back by then.
  /// Ends whatever transaction a failure has left behind. Never throws.
  void rollback() noexcept;
  void endReading() noexcept;  ///< Ends a transaction that has written nothing.

  /// While it lives, the connection waits no longer than `limit` for another process.
  class Patience {
   public:
    Patience(Connection& connection, std::chrono::milliseconds limit)
        : connection_(connection), before_(std::exchange(connection.patience_, limit)) {}
    ~Patience() { connection_.patience_ = before_; }
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

   private:
    Connection& connection_;
    std::chrono::milliseconds before_;
  };

  std::int64_t changes() const { return sqlite3_changes64(handle_.get()); }
  std::int64_t lastRow() const { return sqlite3_last_insert_rowid(handle_.get()); }
  sqlite3* handle() const { return handle_.get(); }
  const std::string& name() const { return name_; }

  [[noreturn]] void fail(int code) const;

 private:
  friend class Statement;
  struct Closing {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
  };

  void giveBack(IdleStatements::node_type node) noexcept;
  static int waitForOthers(void* self, int attempt) noexcept;

  std::string name_;
  std::unique_ptr<sqlite3, Closing> handle_;
  IdleStatements idle_;  // finalized before the handle closes
  std::uint64_t uses_ = 0;
  std::chrono::milliseconds patience_{4000};
  std::chrono::steady_clock::time_point waitingSince_;
};

}  // namespace tavoline::sqlite
