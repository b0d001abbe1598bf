#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "data/sql/Writer.h"
#include "data/store/Relieving.h"
#include "data/store/Store.h"
#include "data/store/sqlite/Connection.h"
#include "data/store/sqlite/HolderRecord.h"
#include "data/store/sqlite/Log.h"
#include "data/store/sqlite/Notice.h"
#include "data/store/sqlite/Readers.h"
#include "data/store/sqlite/SqliteSnapshot.h"

namespace tavoline::sqlite {

/// The store in one SQLite file with a write-ahead log: one writing connection, and a reading one for each
/// version that somebody holds. Before a further version is taken, and whenever the log is to be folded,
/// those who hold versions are asked to let go.
class SqliteStore : public Store, public std::enable_shared_from_this<SqliteStore> {
 public:
  SqliteStore(const std::string& path, std::unique_ptr<Connection> writer);

  std::shared_ptr<const Catalog> catalog() const override;
  std::shared_ptr<const Snapshot> snapshot() override;

  RowId insert(const std::string& table, const FieldValues& fields) override;
  void update(const std::string& table, RowId row, const FieldValues& fields) override;
  void erase(const std::string& table, RowId row) override;
  void execute(const sql::Update& resolved, const sql::Parameters& parameters) override;
  void relieveBy(std::weak_ptr<const Reliever> reliever) override { relieving_.by(std::move(reliever)); }
  std::string advice() const override;
  std::size_t announce(const std::string& occupation) override;
  void idle() override;
  void pause() override;

  Version version() const;  ///< Throws StoreError.
  bool keepsCounts() const { return keepsCounts_; }
  /// What stands for the counts in a store that keeps none: all tables count whatever others commit.
  WriteCounts countsSeen(const Version& version) const;

 private:
  bool inPlace();
  void requireInPlace();
  std::int64_t write(const TableInfo& table, const sql::Written& written);
  void foldLog();
  void leaveLog();

  const std::string path_;
  std::unique_ptr<Connection> writer_;
  std::optional<FileIdentity> file_, logFile_;  // what stood under these names when the store was opened
  Log log_;
  mutable std::shared_ptr<const Catalog> catalog_;  // as read at `schema_`
  mutable std::int64_t schema_ = 0;                 // the engine's count of changed definitions
  std::shared_ptr<Readers> readers_;
  mutable bool keepsCounts_ = false;  // at `schema_`
  std::uint64_t commits_ = 0;
  WriteCounts written_;  // by this process
  std::weak_ptr<SqliteSnapshot> current_;
  Relieving relieving_;
  bool toldOfLoss_ = false;           // in a quiet moment
  std::optional<Version> relieved_;   // the version at the latest quiet moment
  std::optional<Version> folded_;     // the version whose log was last folded entirely
  std::optional<Version> truncated_;  // ... and made an empty file
  HolderRecord record_;
  Notice notice_;
};

}  // namespace tavoline::sqlite
