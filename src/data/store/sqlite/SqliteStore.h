#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "data/sql/Writer.h"
#include "data/store/Store.h"
#include "data/store/sqlite/Connection.h"
#include "data/store/sqlite/Readers.h"
#include "data/store/sqlite/SqliteSnapshot.h"

namespace tavoline::sqlite {

/// The store in one SQLite file with a write-ahead log: one writing connection, and a reading one for each
/// version that somebody holds.
class SqliteStore : public Store, public std::enable_shared_from_this<SqliteStore> {
 public:
  SqliteStore(const std::string& path, std::unique_ptr<Connection> writer);

  std::shared_ptr<const Catalog> catalog() const override;
  std::shared_ptr<const Snapshot> snapshot() override;

  RowId insert(const std::string& table, const FieldValues& fields) override;
  void update(const std::string& table, RowId row, const FieldValues& fields) override;
  void erase(const std::string& table, RowId row) override;
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override;
  void idle() override;

  Version version() const;  ///< Throws StoreError.
  bool unchangedSince(const Version& version, const std::vector<std::string>& tables) const;

 private:
  std::int64_t write(const TableInfo& table, const sql::Written& written);
  bool foldLog();
  void leaveLog();

  std::unique_ptr<Connection> writer_;
  mutable std::shared_ptr<const Catalog> catalog_;  // as read at `schema_`
  mutable std::int64_t schema_ = 0;                 // the engine's count of changed definitions
  std::shared_ptr<Readers> readers_;
  std::uint64_t commits_ = 0;
  std::unordered_map<std::string, std::uint64_t> changed_;  // the commit that last wrote to a table
  std::weak_ptr<SqliteSnapshot> current_;
  std::optional<Version> folded_;  // the version whose log was last folded entirely
};

}  // namespace tavoline::sqlite
