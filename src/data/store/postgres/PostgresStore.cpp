#include "data/store/postgres/PostgresStore.h"

#include <algorithm>

#include "data/schema/Identity.h"
#include "data/store/Occupation.h"
#include "data/store/Writes.h"
#include "data/store/postgres/Engine.h"
#include "data/value/Errors.h"

namespace tavoline::postgres {

namespace {

using namespace std::chrono_literals;

// A transaction that stays keeps the server from clearing away what was overwritten since.
constexpr auto oldestVersion = 60s;

constexpr auto toleratedDifference = 2min;  // of the clocks

// What a workstation is at stands as a lock that all may share: it goes with the connection.
std::int64_t say(Connection& connection, std::optional<std::int64_t> key) {
  std::vector<Question> questions{{"SELECT pg_advisory_unlock_all()"}};
  if (key) {
    questions.push_back({"SELECT pg_advisory_lock_shared($1)", {*key}});
    questions.push_back(
        {"SELECT count(*) FROM pg_locks WHERE locktype = 'advisory' AND objsubid = 1 AND granted AND "
         "((classid::bigint << 32) | objid::bigint) = $1 AND pid <> pg_backend_pid() AND database = (SELECT "
         "oid FROM pg_database WHERE datname = current_database())",
         {*key}});
  }
  const std::vector<Answer> answers = connection.ask(questions);
  return key ? answers.back().integer(0, 0) : 0;
}

// "12 minutes"
std::string inWords(std::chrono::seconds time) {
  const auto of = [](std::int64_t number, const char* unit) {
    return std::to_string(number) + ' ' + unit + (number > 1 ? "s" : "");
  };
  if (time >= 48h) return of(time / 24h, "jour");
  return time >= 2h ? of(time / 1h, "heure") : of(time / 1min, "minute");
}

}  // namespace

PostgresStore::PostgresStore(std::shared_ptr<Server> server, std::unique_ptr<Connection> writer)
    : server_(std::move(server)),
      writer_(std::move(writer)),
      readers_(std::make_shared<Readers>(server_)),
      catalog_(std::make_shared<const Catalog>(readCatalog(*writer_))) {}

Connection& PostgresStore::writer() const {
  if (!writer_->answers()) {
    writer_ = std::make_unique<Connection>(server_);
    if (announced_) say(*writer_, announced_);
  }
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
  if (shared_) return shared_;
  auto snapshot = newest();
  if (sharing_ > 0) shared_ = snapshot;
  return snapshot;
}

void PostgresStore::shareVersion(bool begins) {
  sharing_ += begins ? 1 : -1;
  if (sharing_ == 0) shared_.reset();
}

// Where the server has no room for one more connection, this workstation makes do with those that it has.
std::shared_ptr<Pin> PostgresStore::pinOrRelief() {
  try {
    return newPin();
  } catch (const StoreError&) {
    if (!server_->full || relieving_.underWay()) throw;
  }
  relieving_.ask(Relief::None);
  return newPin();
}

std::shared_ptr<const Snapshot> PostgresStore::newest() {
  auto pin = pinOrRelief();
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
  shared_.reset();
  Connection& connection = writer();  // what has gone meanwhile is made anew, and nothing was sent to it
  try {
    return connection.ask(Question{written.text, written.values});
  } catch (const LostConnection& loss) {
    failUncertain(server_->address, table.name, loss.detail());
  }
}

// In seconds of the one time of the world: where a server counts the hours is its own affair.
std::string PostgresStore::advice() const {
  const Answer answer = writer().ask(Question{"SELECT extract(epoch FROM clock_timestamp())::bigint"});
  const std::chrono::seconds server(answer.integer(0, 0));
  const auto here = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto ahead = here.time_since_epoch() - server;
  if (std::chrono::abs(ahead) < toleratedDifference) return {};
  return std::string("L'horloge de ce poste ") + (ahead > 0s ? "avance" : "retarde") + " de " +
         inWords(std::chrono::abs(ahead)) + " sur celle du serveur des données " + server_->address.place +
         " : ses commandes et ses clôtures porteraient une autre heure que celles des autres postes. Réglez "
         "l'heure de celui des deux qui se trompe, puis relancez le programme.";
}

std::size_t PostgresStore::announce(const std::string& occupation) try {
  announced_.reset();
  if (!occupation.empty()) announced_ = occupationKey(occupation);
  return static_cast<std::size_t>(say(writer(), announced_));
} catch (const StoreError&) {
  return 0;
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
  server_->refusal.reset();
  renew();
}

void PostgresStore::pause() {
  server_->refusal.reset();
  const auto now = std::chrono::steady_clock::now();
  const auto old = [now](const Pin* pin) { return now - pin->since() > oldestVersion; };
  if (std::ranges::any_of(readers_->pins(), old)) renew();
}

}  // namespace tavoline::postgres
