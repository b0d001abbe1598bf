#include "bench/Raw.h"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tavoline::bench {
namespace {

[[noreturn]] void fail(sqlite3* database) {
  throw std::runtime_error(sqlite3_errmsg(database));
}

// As a workstation's sessions say it.
std::string nameHere() {
  return "tavoline " + std::to_string(::getpid());
}

struct ClearResult {
  void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

void require(const Result& result) {
  const ExecStatusType status = PQresultStatus(result.get());
  if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
    throw std::runtime_error(PQresultErrorMessage(result.get()));
}

}  // namespace

Database openRaw() {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2("BDD.mdb", &handle, SQLITE_OPEN_READWRITE, nullptr);
  Database database(handle);
  if (result != SQLITE_OK) fail(handle);
  execute(handle, "pragma journal_mode = wal");
  execute(handle, "pragma synchronous = full");
  execute(handle, "pragma wal_autocheckpoint = 8000");
  return database;
}

void execute(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail(database);
}

Statement prepare(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) fail(database);
  return Statement(statement);
}

void run(sqlite3_stmt* statement) {
  if (sqlite3_step(statement) != SQLITE_DONE) fail(sqlite3_db_handle(statement));
  sqlite3_reset(statement);
}

std::string addressHere() {
  std::string line;
  std::getline(std::ifstream("BDD.mdb", std::ios::binary), line);
  return line.starts_with("postgresql://") ? line : std::string();
}

BareServer::BareServer() : connection_(PQconnectdb(addressHere().c_str())) {
  if (PQstatus(connection_.get()) != CONNECTION_OK)
    throw std::runtime_error(PQerrorMessage(connection_.get()));
  execute("set application_name = '" + nameHere() + "'");
}

void BareServer::execute(const std::string& sql) {
  text(sql);
}

std::string BareServer::text(const std::string& select) {
  const Result result(PQexec(connection_.get(), select.c_str()));
  require(result);
  return PQntuples(result.get()) > 0 ? PQgetvalue(result.get(), 0, 0) : "";
}

void BareServer::prepare(const char* name, const char* sql) {
  require(Result(PQprepare(connection_.get(), name, sql, 0, nullptr)));
}

void BareServer::run(const char* name, const std::string& value) {
  const char* const values[] = {value.c_str()};
  require(
      Result(PQexecPrepared(connection_.get(), name, value.empty() ? 0 : 1, values, nullptr, nullptr, 0)));
}

std::string BareServer::socket() const {
  return std::string(PQhost(connection_.get())) + "/.s.PGSQL." + PQport(connection_.get());
}

void executeHere(const std::string& sql) {
  if (!addressHere().empty()) return BareServer().execute(sql);
  execute(openRaw().get(), sql);
}

namespace {

std::vector<std::string> sessionsThat(const std::string& condition) {
  std::vector<std::string> processes;
  if (addressHere().empty()) return processes;
  std::istringstream all(BareServer().text(
      "select string_agg(pid::text, ' ') from pg_stat_activity where datname = current_database() and pid <> "
      "pg_backend_pid() and " +
      condition));
  for (std::string process; all >> process;) processes.push_back(process);
  return processes;
}

}  // namespace

std::vector<std::string> sessions() {
  return sessionsThat("backend_type = 'client backend'");
}

std::vector<std::string> ownSessions() {
  return sessionsThat("application_name = '" + nameHere() + "'");
}

namespace {

class SqliteTap : public RawTap {
 public:
  SqliteTap()
      : database_(openRaw()),
        line_(prepare(database_.get(),
                      "insert into relation_commande (n_commande, code_article, article, qte, prix, total) "
                      "values (?, '1', 'Café', 1, 60, 60)")),
        stock_(prepare(database_.get(), "update article set qte_stock = qte_stock - 1 where rid = 1")),
        table_(prepare(database_.get(), "update Table_ set etat = 'ON', n_commande = ? where rid = 1")) {
    const Statement newest = prepare(database_.get(), "select max(n_commande) from commande");
    sqlite3_step(newest.get());
    order_ = sqlite3_column_int64(newest.get(), 0);
  }
  void tap() override {
    sqlite3_bind_int64(line_.get(), 1, order_);
    run(line_.get());
    run(stock_.get());
    sqlite3_bind_int64(table_.get(), 1, order_);
    run(table_.get());
  }
  void idle() override {
    sqlite3_wal_checkpoint_v2(database_.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
  }

 private:
  Database database_;
  Statement line_, stock_, table_;
  long long order_ = 0;
};

class ServerTap : public RawTap {
 public:
  ServerTap() : order_(server_.text("select max(n_commande) from commande")) {
    server_.prepare(
        "line",
        "insert into relation_commande (n_commande, code_article, article, qte, prix, total) values "
        "($1, '1', 'Café', 1, 60, 60)");
    server_.prepare("stock", "update article set qte_stock = qte_stock - 1 where rid = 1");
    server_.prepare("table", "update \"Table_\" set etat = 'ON', n_commande = $1 where rid = 1");
  }
  void tap() override {
    server_.run("line", order_);
    server_.run("stock");
    server_.run("table", order_);
  }

 private:
  BareServer server_;
  std::string order_;
};

}  // namespace

std::unique_ptr<RawTap> RawTap::here() {
  if (addressHere().empty()) return std::make_unique<SqliteTap>();
  return std::make_unique<ServerTap>();
}

}  // namespace tavoline::bench
