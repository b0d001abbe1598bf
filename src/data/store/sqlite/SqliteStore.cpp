#include "data/store/sqlite/SqliteStore.h"

#include <utility>

#include "data/store/Occupation.h"
#include "data/store/Writes.h"
#include "data/store/sqlite/CatalogReader.h"
#include "data/store/sqlite/Engine.h"
#include "data/store/sqlite/Lineage.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::sqlite {

namespace {

std::string logOf(const std::string& path) {
  return path + "-wal";
}

}  // namespace

SqliteStore::SqliteStore(const std::string& path, std::unique_ptr<Connection> writer)
    : path_(path),
      writer_(std::move(writer)),
      file_(FileIdentity::of(path)),
      log_(*writer_),
      readers_(std::make_shared<Readers>(path, writer_->name())),
      record_(path),
      notice_(file_.value_or(FileIdentity())) {
  writer_->run("PRAGMA synchronous = FULL");
  writer_->run("PRAGMA journal_size_limit = 8388608");
  catalog();
  logFile_ = FileIdentity::of(logOf(path));
}

// The engine keeps hold of a file that was removed or renamed, and writes to it as if nothing had happened;
// where another has come in its place, their processes would share one log.
bool SqliteStore::inPlace() {
  if (!logFile_) logFile_ = FileIdentity::of(logOf(path_));
  return FileIdentity::of(path_) == file_ && FileIdentity::of(logOf(path_)) == logFile_;
}

void SqliteStore::requireInPlace() {
  if (inPlace()) return;
  throw StoreError(
      "« " + writer_->name() +
      " », ou son journal « -wal », a été enlevé ou remplacé pendant que le programme s'en "
      "servait : rien n'a été enregistré. Arrêtez le programme sur tous les postes, remettez le "
      "fichier à sa place avec ceux qui l'accompagnaient (ou une sauvegarde, par « tavoline-store "
      "restore »), puis relancez.");
}

std::shared_ptr<const Catalog> SqliteStore::catalog() const {
  Statement version = writer_->prepare("PRAGMA schema_version");
  version.step();
  const std::int64_t schema = version.integer(0);
  if (catalog_ && schema == schema_) return catalog_;
  catalog_ = std::make_shared<const Catalog>(readCatalog(*writer_));
  keepsCounts_ = sqlite::keepsCounts(*writer_, *catalog_);
  schema_ = schema;
  return catalog_;
}

Version SqliteStore::version() const {
  Statement foreign = writer_->prepare("PRAGMA data_version");
  foreign.step();
  return {commits_, foreign.integer(0)};
}

WriteCounts SqliteStore::countsSeen(const Version& version) const {
  constexpr std::int64_t foreignCommit = std::int64_t{1} << 40;  // more rows than a process writes
  WriteCounts counts;
  for (const TableInfo& table : catalog_->tables()) {
    const std::string name = foldName(table.name);
    const auto rows = written_.find(name);
    counts[name] = version.foreign * foreignCommit + (rows == written_.end() ? 0 : rows->second);
  }
  return counts;
}

std::shared_ptr<const Snapshot> SqliteStore::snapshot() {
  // Asked before the transaction begins: a commit that comes in between is seen, and at worst seen twice.
  Version now = version();
  if (auto live = current_.lock(); live && live->version() == now) return live;
  if (readers_->pins().size() >= kHeldVersions && !relieving_.underWay()) {
    relieving_.ask(Relief::Newest);
    now = version();
    if (auto live = current_.lock(); live && live->version() == now) return live;
  }
  requireInPlace();
  auto snapshot = std::make_shared<SqliteSnapshot>(shared_from_this(), now, std::make_shared<Pin>(readers_));
  current_ = snapshot;
  return snapshot;
}

std::int64_t SqliteStore::write(const TableInfo& table, const sql::Written& written) {
  // Somebody may be waiting for all readers, and keep this write waiting until then.
  if (log_.isPressing()) relieving_.ask(Relief::None);
  requireInPlace();
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
  if (rows > 0) {
    ++commits_;
    written_[foldName(table.name)] += rows;
  }
  return rows;
}

std::string SqliteStore::advice() const {
  if (keepsCounts_ && hasIdentity(*writer_)) return {};
  return "« " + writer_->name() +
         " » vient d'une version plus ancienne du programme : on peut travailler, mais plus lentement. "
         "Mettez-la à jour une fois par « tavoline-store upgrade " +
         writer_->name() + " », qui en fait d'abord une copie.";
}

std::size_t SqliteStore::announce(const std::string& occupation) {
  if (occupation.empty()) return notice_.silence(), 0;
  const std::int64_t key = occupationKey(occupation);
  notice_.say(key);
  return notice_.othersSaying(key);
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

// A folded log begins again from its start with the next write, once nobody reads in it. The current version
// then stands in the file as well: whoever holds it is moved there.
void SqliteStore::leaveLog() {
  const auto live = current_.lock();
  if (!live) return;
  auto pin = std::make_shared<Pin>(readers_, live->since());
  // The same before and after: what the pin shows is what the snapshot shows.
  if (version() == live->version()) live->moveTo(std::move(pin));
}

void SqliteStore::foldLog() {
  const Version before = version();
  if (!log_.fold()) return log_.triedInVain();
  if (const auto live = current_.lock(); !live || live->version() == before) {
    leaveLog();
    folded_ = before;
  }
}

void SqliteStore::idle() {
  const bool lost = !inPlace();
  if (lost && !std::exchange(toldOfLoss_, true)) requireInPlace();
  if (lost) return;
  toldOfLoss_ = false;
  try {
    const Version now = version();
    // Where others write as well, a workstation at rest must not stand in the way of their folding.
    const bool alone = !relieved_ || relieved_->foreign == now.foreign;
    relieved_ = now;
    relieving_.ask(alone ? Relief::Newest : Relief::None);
    if (folded_ != now) {
      foldLog();
    } else if (truncated_ != now && log_.truncate()) {
      truncated_ = now;
    }
    record_.write(*readers_);
  } catch (const StoreError&) {
    // Another time will do: nothing is lost while it stands in the log.
  }
}

void SqliteStore::pause() {
  if (!log_.isLong()) return;
  try {
    requireInPlace();
    if (log_.isPressing()) {
      relieving_.ask(Relief::None);
      if (!log_.foldForAll()) log_.triedInVain();
    } else {
      relieving_.ask(Relief::Newest);
      foldLog();
      log_.triedInVain();  // until the next write starts it over
    }
    record_.write(*readers_);
  } catch (const StoreError&) {
  }
}

}  // namespace tavoline::sqlite
