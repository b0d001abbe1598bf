#include "data/store/postgres/PostgresStore.h"

#include <algorithm>

#include "data/schema/Identity.h"
#include "data/store/Writes.h"
#include "data/store/postgres/Engine.h"
#include "data/value/Errors.h"

namespace tavoline::postgres {

namespace {

using namespace std::chrono_literals;

// A transaction that stays keeps the server from clearing away what was overwritten since.
constexpr auto oldestVersion = 60s;

}  // namespace

PostgresStore::PostgresStore(std::shared_ptr<Server> server, std::unique_ptr<Connection> writer)
    : server_(std::move(server)),
      writer_(std::move(writer)),
      readers_(std::make_shared<Readers>(server_)),
      catalog_(std::make_shared<const Catalog>(readCatalog(*writer_))) {}

Connection& PostgresStore::writer() const {
  if (!writer_->alive()) writer_ = std::make_unique<Connection>(server_);
  return *writer_;
}

std::shared_ptr<const Catalog> PostgresStore::catalog() const {
  if (server_->definitionsDoubtful) {
    catalog_ = std::make_shared<const Catalog>(readCatalog(writer()));
    server_->definitionsDoubtful = false;
  }
  return catalog_;
}

WriteCounts PostgresStore::counts() const {
  return countsIn(writer().ask(countsQuestion()));
}

std::shared_ptr<const Snapshot> PostgresStore::snapshot() {
  auto pin = newPin();
  // The same version: all who read it do so in the younger transaction from now on.
  const auto shared = [&]() -> std::shared_ptr<const Snapshot> {
    auto live = current_.lock();
    if (!live || live->counts() != pin->counts()) return nullptr;
    live->moveTo(pin);
    return live;
  };
  if (auto live = shared()) return live;
  if (readers_->pins().size() > kHeldVersions && !relieving_.underWay()) {
    pin.reset();
    relieving_.ask(Relief::Newest);
    pin = newPin();
    if (auto live = shared()) return live;
  }
  auto snapshot = std::make_shared<PostgresSnapshot>(shared_from_this(), std::move(pin));
  current_ = snapshot;
  return snapshot;
}

const TableInfo& PostgresStore::tableNamed(const std::string& name) const {
  return tavoline::tableNamed(*catalog(), name);
}

Answer PostgresStore::write(const TableInfo& table, const sql::Written& written) {
  Connection& connection = writer();  // what had gone before is made anew, and nothing was sent to it
  try {
    return connection.ask(Question{written.text, written.values});
  } catch (const LostConnection& loss) {
    failUncertain(server_->address, table.name, loss.detail());
  }
}

RowId PostgresStore::insert(const std::string& tableName, const FieldValues& fields) {
  const TableInfo& table = tableNamed(tableName);
  sql::Written written = insertion(table, fields, engine());
  written.text += " RETURNING " + engine().quotedName(schema::kRowNumber);
  return write(table, written).integer(0, 0);
}

void PostgresStore::update(const std::string& tableName, RowId row, const FieldValues& fields) {
  const TableInfo& table = tableNamed(tableName);
  if (write(table, change(table, row, fields, engine())).written() == 0) refuseChangeOfGone(table);
}

void PostgresStore::erase(const std::string& tableName, RowId row) {
  const TableInfo& table = tableNamed(tableName);
  if (write(table, removal(table, row, engine())).written() == 0) refuseRemovalOfGone(table);
}

void PostgresStore::execute(const sql::Update& resolved, const sql::Parameters& parameters) {
  write(tableNamed(resolved.table), sql::write(resolved, parameters, engine()));
}

// Whoever holds the newest version goes on in a young transaction; older versions are let go of. A server
// that could not be reached is left to the next gesture: to wait for it here would hold up the screen.
void PostgresStore::renew() {
  if (readers_->pins().empty() || !server_->reachable) return;
  try {
    const auto newest = snapshot();
    if (readers_->pins().size() > 1 || newest.use_count() == 1) relieving_.ask(Relief::Newest);
  } catch (const StoreError&) {
  }
}

void PostgresStore::idle() {
  renew();
}

void PostgresStore::pause() {
  const auto now = std::chrono::steady_clock::now();
  const auto old = [now](const Pin* pin) { return now - pin->since() > oldestVersion; };
  if (std::ranges::any_of(readers_->pins(), old)) renew();
}

}  // namespace tavoline::postgres
