#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace tavoline::bench {

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The store of the working directory on a bare connection, with the durability that a workstation asks for.
Database openRaw();
void execute(sqlite3* database, const std::string& sql);
Statement prepare(sqlite3* database, const std::string& sql);
/// Runs a statement whose parameters are bound to its end, and makes it ready for the next run.
void run(sqlite3_stmt* statement);

/// The engine's own cost of a tap: the three writes alone, prepared once, each its own durable commit.
class RawTap {
 public:
  RawTap();
  void tap();
  /// Folds the log, as a workstation does when its user does nothing.
  void idle();

 private:
  Database database_;
  Statement line_, stock_, table_;
  long long order_ = 0;
};

}  // namespace tavoline::bench
