#include "tools/store/Sqlite.h"

#include <filesystem>

#include "data/value/Errors.h"

namespace tavoline::tool {
namespace {

constexpr int kBusyMilliseconds = 5000;

std::string sentence(int code, const std::string& detail) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "La base est occupée par un autre poste. Réessayez dans un instant.";
    case SQLITE_FULL:
      return "Le disque est plein. Libérez de la place, puis recommencez.";
    case SQLITE_READONLY:
      return "La base est en lecture seule. Vérifiez les droits du fichier et de son dossier.";
    case SQLITE_CANTOPEN:
      return "Le fichier ne peut pas être ouvert. Vérifiez son chemin et ses droits.";
    case SQLITE_NOTADB:
      return "Ce fichier n'est pas une base SQLite.";
    case SQLITE_CORRUPT:
      return "Le fichier est abîmé (" + detail + "). Reprenez la dernière sauvegarde.";
    case SQLITE_IOERR:
      return "Le disque ne répond pas (" + detail + "). Vérifiez le support du fichier.";
    case SQLITE_CONSTRAINT:
      return "La base refuse la ligne : " + detail + '.';
    default:
      return "La base a signalé une erreur : " + detail + '.';
  }
}

// Whoever opens a file for reading only leaves its log behind, and whoever opens it for writing folds a log
// that was left: the one where there is no log, the other where there is one, would change what is looked at.
int observing(const std::string& path) {
  return std::filesystem::exists(path + "-wal") ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
}

}  // namespace

void raiseError(sqlite3* handle, int code) {
  throw StoreError(sentence(code, handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code)));
}

Database::Database(const std::string& path, Mode mode) {
  int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  if (mode == Mode::Observe) flags = observing(path);
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) raiseError(handle, code);
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, kBusyMilliseconds);
  if (mode == Mode::Observe) execute("PRAGMA query_only = ON");
}

void Database::execute(const std::string& sql) const {
  const int code = sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) raiseError(handle(), code);
}

Statement Database::prepare(std::string_view sql) const {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v2(handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  if (code != SQLITE_OK) raiseError(handle(), code);
  return Statement(statement);
}

Statement Database::inserter(std::string_view table, const std::vector<std::string_view>& columns) const {
  std::string names, places;
  for (std::string_view column : columns) {
    names += (names.empty() ? "\"" : ", \"") + std::string(column) + '"';
    places += places.empty() ? "?" : ", ?";
  }
  return prepare("INSERT INTO \"" + std::string(table) + "\" (" + names + ") VALUES (" + places + ')');
}

std::int64_t Database::integer(std::string_view sql) const {
  Statement statement = prepare(sql);
  return statement.step() ? statement.integer(0) : 0;
}

std::string Database::text(std::string_view sql) const {
  Statement statement = prepare(sql);
  return statement.step() ? statement.text(0) : std::string();
}

void Database::close() {
  const int code = sqlite3_close(handle());
  if (code != SQLITE_OK) raiseError(handle(), code);
  static_cast<void>(handle_.release());
}

void Statement::verify(int code) const {
  if (code != SQLITE_OK) raiseError(sqlite3_db_handle(handle_.get()), code);
}

void Statement::bind(int place, std::nullptr_t) {
  verify(sqlite3_bind_null(handle_.get(), place));
}

void Statement::bind(int place, std::int64_t value) {
  verify(sqlite3_bind_int64(handle_.get(), place, value));
}

void Statement::bind(int place, double value) {
  verify(sqlite3_bind_double(handle_.get(), place, value));
}

void Statement::bind(int place, std::string_view value) {
  verify(
      sqlite3_bind_text64(handle_.get(), place, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bind(int place, const std::vector<std::uint8_t>& bytes) {
  verify(sqlite3_bind_blob64(handle_.get(), place, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
}

bool Statement::step() {
  const int code = sqlite3_step(handle_.get());
  if (code == SQLITE_ROW) return true;
  sqlite3_reset(handle_.get());
  if (code != SQLITE_DONE) raiseError(sqlite3_db_handle(handle_.get()), code);
  return false;
}

std::string Statement::text(int column) const {
  const auto* bytes = sqlite3_column_text(handle_.get(), column);
  const int size = sqlite3_column_bytes(handle_.get(), column);
  return bytes ? std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size))
               : std::string();
}

}  // namespace tavoline::tool
