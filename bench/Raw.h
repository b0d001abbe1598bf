#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "data/store/postgres/Reach.h"

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

/// The line in the working directory's BDD.mdb, where that leads to a server; empty where it is a store.
std::string addressHere();

/// A bare connection to the server of the working directory's store.
class BareServer {
 public:
  BareServer();
  void execute(const std::string& sql);
  std::string text(const std::string& select);  ///< Its first value.
  void prepare(const char* name, const char* sql);
  void run(const char* name,
           const std::string& value = {});  ///< A prepared statement, with a value if it takes one.
  std::string socket() const;               ///< Its file.
  std::string user() const { return PQuser(connection_.get()); }
  std::string database() const { return PQdb(connection_.get()); }

 private:
  postgres::Handle connection_;
};

/// Runs a statement that every engine reads on the store of the working directory.
void executeHere(const std::string& sql);
/// The processes that serve the database of the working directory's store; none for a file.
std::vector<std::string> sessions();
/// Those of them that serve this process.
std::vector<std::string> ownSessions();

/// The engine's own cost of a tap: the three writes alone, prepared once, each its own durable commit.
class RawTap {
 public:
  static std::unique_ptr<RawTap> here();  ///< On the store of the working directory.
  virtual ~RawTap() = default;
  virtual void tap() = 0;
  /// Folds the log, as a workstation does when its user does nothing.
  virtual void idle() {}
};

}  // namespace tavoline::bench
