#include "data/store/sqlite/Connection.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "data/store/sqlite/Functions.h"
#include "data/store/sqlite/Messages.h"

namespace tavoline::sqlite {

namespace {

constexpr std::size_t idleStatements = 192;

bool canHoldLog(const std::string& path) {
  const std::string folder = std::filesystem::absolute(path).parent_path().string();
  return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

int flagsFor(Connection::Role role, const std::string& path) {
  switch (role) {
    case Connection::Role::Reader:
    case Connection::Role::Writer:
      return SQLITE_OPEN_READWRITE;
    case Connection::Role::Maker:
      return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    case Connection::Role::Observer:
      break;
  }
  // Whoever opens a file for reading only leaves its log behind, and whoever opens it for writing folds a log
  // that was left: the one where there is no log, the other where there is one, would change what is looked
  // at. Where nothing can be written beside it, the engine looks at the file alone.
  if (std::filesystem::exists(path + "-wal")) return SQLITE_OPEN_READONLY;
  return canHoldLog(path) ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
}

// The engine would take "file:..." for an address. ":memory:" is no file at all.
std::string plain(const std::string& path) {
  return path.starts_with('/') || path == ":memory:" ? path : "./" + path;
}

// The name of a file that nobody can change meanwhile.
std::string unchanging(const std::string& path) {
  std::string address = "file:";
  for (const char c : plain(path)) {
    if (c == '%')
      address += "%25";
    else if (c == '?')
      address += "%3f";
    else if (c == '#')
      address += "%23";
    else
      address += c;
  }
  return address + "?immutable=1";
}

}  // namespace

Connection::Connection(const std::string& path, std::string name, Role role) : name_(std::move(name)) {
  sqlite3* opened = nullptr;
  const int flags = flagsFor(role, path);
  const std::string file = (flags & SQLITE_OPEN_URI) != 0 ? unchanging(path) : plain(path);
  const int code = sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(opened);
  if (code != SQLITE_OK) fail(code);

  sqlite3_extended_result_codes(opened, 1);
  sqlite3_busy_handler(opened, waitForOthers, this);
  registerFunctions(opened);
  if (role == Role::Reader || role == Role::Observer) run("PRAGMA query_only = ON");
}

void Connection::fail(int code) const {
  sqlite::fail(handle_.get(), code, name_);
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

void Connection::execute(const std::string& statements) {
  const int code = sqlite3_exec(handle_.get(), statements.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

std::int64_t Connection::integer(const std::string& text) {
  Statement statement = prepare(text);
  return statement.step() ? statement.integer(0) : 0;
}

std::string Connection::text(const std::string& text) {
  Statement statement = prepare(text);
  return statement.step() ? statement.text(0) : std::string();
}

void Connection::close() {
  idle_.clear();
  const int code = sqlite3_close(handle_.get());
  if (code != SQLITE_OK) fail(code);
  static_cast<void>(handle_.release());
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

// Several workstations that write without a pause come to their turns by asking often, each in its own
// rhythm: one that waited longer and longer between two questions would always come too late.
int Connection::waitForOthers(void* self, int attempt) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  const auto now = std::chrono::steady_clock::now();
  if (attempt == 0) connection.waitingSince_ = now;
  if (now - connection.waitingSince_ >= connection.patience_) return 0;
  sqlite3_sleep(1 + static_cast<int>((now.time_since_epoch().count() >> 10) % 4));
  return 1;
}

}  // namespace tavoline::sqlite
