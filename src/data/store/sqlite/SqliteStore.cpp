#include "data/store/sqlite/SqliteStore.h"

#include <algorithm>

#include "data/store/Writes.h"
#include "data/store/sqlite/CatalogReader.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

SqliteStore::SqliteStore(const std::string& path, std::unique_ptr<Connection> writer)
    : writer_(std::move(writer)), readers_(std::make_shared<Readers>(path, writer_->name())) {
  writer_->run("PRAGMA synchronous = FULL");
  // The log is folded when nobody waits; only a day without a quiet moment gets there by itself, at 32 MB.
  writer_->run("PRAGMA wal_autocheckpoint = 8000");
  writer_->run("PRAGMA journal_size_limit = 33554432");
  catalog();
}

std::shared_ptr<const Catalog> SqliteStore::catalog() const {
  Statement version = writer_->prepare("PRAGMA schema_version");
  version.step();
  const std::int64_t schema = version.integer(0);
  if (catalog_ && schema == schema_) return catalog_;
  catalog_ = std::make_shared<const Catalog>(readCatalog(*writer_));
  schema_ = schema;
  return catalog_;
}

Version SqliteStore::version() const {
  Statement foreign = writer_->prepare("PRAGMA data_version");
  foreign.step();
  return {commits_, foreign.integer(0)};
}

bool SqliteStore::unchangedSince(const Version& since, const std::vector<std::string>& tables) const {
  if (version().foreign != since.foreign) return false;
  return std::none_of(tables.begin(), tables.end(), [&](const std::string& name) {
    const auto change = changed_.find(tableNamed(*catalog_, name).name);
    return change != changed_.end() && change->second > since.own;
  });
}

std::shared_ptr<const Snapshot> SqliteStore::snapshot() {
  // Asked before the transaction begins: a commit that comes in between is seen, and at worst seen twice.
  const Version now = version();
  if (auto live = current_.lock(); live && live->version() == now) return live;
  auto snapshot = std::make_shared<SqliteSnapshot>(shared_from_this(), now, std::make_shared<Pin>(readers_));
  current_ = snapshot;
  return snapshot;
}

std::int64_t SqliteStore::write(const TableInfo& table, const sql::Written& written) {
  try {
    Statement statement = writer_->prepare(written.text);
    statement.bind(written.values);
    while (statement.step()) {
    }
  } catch (...) {
    writer_->rollback();
    throw;
  }
  const std::int64_t rows = writer_->changes();
  if (rows > 0) changed_[table.name] = ++commits_;
  return rows;
}

RowId SqliteStore::insert(const std::string& tableName, const FieldValues& fields) {
  const TableInfo& table = tableNamed(*catalog_, tableName);
  write(table, insertion(table, fields, engine()));
  return writer_->lastRow();
}

void SqliteStore::update(const std::string& tableName, RowId row, const FieldValues& fields) {
  const TableInfo& table = tableNamed(*catalog_, tableName);
  if (write(table, change(table, row, fields, engine())) == 0) refuseChangeOfGone(table);
}

void SqliteStore::erase(const std::string& tableName, RowId row) {
  const TableInfo& table = tableNamed(*catalog_, tableName);
  if (write(table, removal(table, row, engine())) == 0) refuseRemovalOfGone(table);
}

void SqliteStore::execute(const sql::Update& resolved, const sql::Parameters& parameters) {
  write(tableNamed(*catalog_, resolved.table), sql::write(resolved, parameters, engine()));
}

// Moves what the log holds into the file, as far as the versions still held allow. True if nothing is left.
bool SqliteStore::foldLog() {
  int logged = 0, folded = 0;
  const int code =
      sqlite3_wal_checkpoint_v2(writer_->handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, &logged, &folded);
  return code == SQLITE_OK && logged == folded;
}

// A folded log begins again from its start once nobody reads in it. The current version then stands in the
// file as well: whoever holds it is moved there.
void SqliteStore::leaveLog() {
  const auto live = current_.lock();
  if (!live) return;
  auto pin = std::make_shared<Pin>(readers_);
  // The same before and after: what the pin shows is what the snapshot shows.
  if (version() == live->version()) live->moveTo(std::move(pin));
}

void SqliteStore::idle() {
  const Connection::Impatience atOnce(*writer_);
  try {
    const Version before = version();
    if (folded_ == before || !foldLog()) return;
    folded_ = before;
    if (const auto live = current_.lock(); live && live->version() == before) leaveLog();
  } catch (const StoreError&) {
    // Another time will do: nothing is lost while it stands in the log.
  }
}

}  // namespace tavoline::sqlite
