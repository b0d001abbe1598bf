#include "bench/Raw.h"

#include <stdexcept>

namespace tavoline::bench {
namespace {

[[noreturn]] void fail(sqlite3* database) {
  throw std::runtime_error(sqlite3_errmsg(database));
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

RawTap::RawTap()
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

void RawTap::tap() {
  sqlite3_bind_int64(line_.get(), 1, order_);
  run(line_.get());
  run(stock_.get());
  sqlite3_bind_int64(table_.get(), 1, order_);
  run(table_.get());
}

void RawTap::idle() {
  sqlite3_wal_checkpoint_v2(database_.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

}  // namespace tavoline::bench
