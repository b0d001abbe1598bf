#include "data/store/sqlite/Connection.h"

#include <algorithm>

#include "data/store/sqlite/Functions.h"
#include "data/store/sqlite/Messages.h"

namespace tavoline::sqlite {

namespace {

constexpr int patience = 4000;  // ms that a call waits for another process before it gives up
constexpr std::size_t idleStatements = 192;

}  // namespace

Connection::Connection(const std::string& path, std::string name, Role role) : name_(std::move(name)) {
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) fail(code);

  sqlite3_extended_result_codes(opened, 1);
  sqlite3_busy_timeout(opened, patience);
  registerFunctions(opened);
  if (role == Role::Reader) run("PRAGMA query_only = ON");
}

void Connection::fail(int code) const {
  sqlite::fail(handle_.get(), code, name_, catalog_);
}

Statement Connection::prepare(const std::string& text) {
  if (const auto known = idle_.find(text); known != idle_.end()) return {*this, idle_.extract(known)};

  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v3(handle_.get(), text.data(), static_cast<int>(text.size()),
                                      SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  if (code != SQLITE_OK) fail(code);
  return {*this, idle_.extract(idle_.emplace(text, IdleStatement{StatementHandle(prepared)}))};
}

void Connection::giveBack(IdleStatements::node_type node) noexcept {
  sqlite3_reset(node.mapped().handle.get());
  sqlite3_clear_bindings(node.mapped().handle.get());  // lets go of pictures
  node.mapped().lastUse = ++uses_;
  idle_.insert(std::move(node));
  if (idle_.size() <= idleStatements) return;
  idle_.erase(std::min_element(idle_.begin(), idle_.end(), [](const auto& a, const auto& b) {
    return a.second.lastUse < b.second.lastUse;
  }));
}

void Connection::run(const std::string& text) {
  Statement statement = prepare(text);
  while (statement.step()) {
  }
}

void Connection::rollback() noexcept {
  if (!sqlite3_get_autocommit(handle_.get()))
    sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Connection::endReading() noexcept {
  try {
    run("COMMIT");
  } catch (const std::exception&) {
    rollback();
  }
}

Connection::Impatience::Impatience(Connection& connection) : handle_(connection.handle()) {
  sqlite3_busy_timeout(handle_, 0);
}

Connection::Impatience::~Impatience() {
  sqlite3_busy_timeout(handle_, patience);
}

}  // namespace tavoline::sqlite
