#include "data/store/sqlite/SqliteStore.h"

#include <algorithm>

#include "data/sql/Writer.h"
#include "data/store/sqlite/CatalogReader.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

std::string quotedName(const std::string& name) {
  return sql::sqliteEngine().quotedName(name);
}
std::string placeholder(std::size_t number) {
  return sql::sqliteEngine().placeholder(number);
}

// A write's column names as the table spells them, and its values as the columns hold them.
struct Fields {
  std::vector<std::string> columns;
  std::vector<Value> values;
};

Fields fieldsOf(const TableInfo& table, const FieldValues& given) {
  Fields fields;
  fields.columns.reserve(given.size());
  fields.values.reserve(given.size() + 1);
  for (const auto& [name, value] : given) {
    const ColumnInfo* const column = table.find(name);
    if (!column)
      throw StoreError("La table « " + table.name + " » n'a pas de colonne « " + name +
                       " ». Le fichier de données ne convient pas à ce programme.");
    fields.columns.push_back(quotedName(column->name));
    fields.values.push_back(value.as(column->type));
  }
  return fields;
}

}  // namespace

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
  auto read = std::make_shared<const Catalog>(readCatalog(*writer_));
  writer_->explainWith(read.get());
  catalog_ = std::move(read);
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
    const auto change = changed_.find(tableNamed(name).name);
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

const TableInfo& SqliteStore::tableNamed(const std::string& name) const {
  const TableInfo* const table = catalog_->find(name);
  if (!table)
    throw StoreError(
        "La table « " + name +
        " » manque dans les données. Remettez la dernière sauvegarde, ou examinez le fichier par "
        "« tavoline-store check ».");
  return *table;
}

std::int64_t SqliteStore::write(const TableInfo& table, const std::string& text,
                                const std::vector<Value>& values) {
  try {
    Statement statement = writer_->prepare(text);
    statement.bind(values);
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

RowId SqliteStore::insert(const std::string& tableName, const FieldValues& given) {
  const TableInfo& table = tableNamed(tableName);
  const Fields fields = fieldsOf(table, given);
  std::string columns, marks;
  for (std::size_t i = 0; i < fields.columns.size(); ++i) {
    columns += (i ? ", " : "") + fields.columns[i];
    marks += (i ? ", " : "") + placeholder(i + 1);
  }
  const std::string into = "INSERT INTO " + quotedName(table.name);
  write(
      table,
      fields.columns.empty() ? into + " DEFAULT VALUES" : into + " (" + columns + ") VALUES (" + marks + ")",
      fields.values);
  return writer_->lastRow();
}

void SqliteStore::update(const std::string& tableName, RowId row, const FieldValues& given) {
  const TableInfo& table = tableNamed(tableName);
  Fields fields = fieldsOf(table, given);
  std::string assignments = fields.columns.empty() ? "rid = rid" : "";
  for (std::size_t i = 0; i < fields.columns.size(); ++i)
    assignments += (i ? ", " : "") + fields.columns[i] + " = " + placeholder(i + 1);
  fields.values.emplace_back(row);
  const std::string where = " WHERE rid = " + placeholder(fields.values.size());
  if (write(table, "UPDATE " + quotedName(table.name) + " SET " + assignments + where, fields.values) == 0)
    throw StoreError(
        "La ligne de la table « " + table.name +
        " » a été supprimée par un autre poste : elle ne peut plus être modifiée. Actualisez, puis "
        "recommencez.");
}

void SqliteStore::erase(const std::string& tableName, RowId row) {
  const TableInfo& table = tableNamed(tableName);
  if (write(table, "DELETE FROM " + quotedName(table.name) + " WHERE rid = " + placeholder(1),
            {Value(row)}) == 0)
    throw StoreError("La ligne de la table « " + table.name +
                     " » a été supprimée par un autre poste : il ne reste rien à supprimer. Actualisez.");
}

void SqliteStore::execute(const sql::Update& resolved, const sql::Parameters& parameters) {
  const TableInfo& table = tableNamed(resolved.table);
  const sql::Written written = sql::write(resolved, parameters, sql::sqliteEngine());
  write(table, written.text, written.values);
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
