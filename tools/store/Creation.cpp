#include "tools/store/Creation.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "data/schema/Schema.h"
#include "data/store/Definitions.h"
#include "data/store/Writes.h"
#include "data/store/sqlite/Connection.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Errors.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

/// Removes a file (or folder) in the making, and the engine's files beside it, unless it got its name.
class Passing {
 public:
  explicit Passing(std::string path) : path_(std::move(path)) {}
  ~Passing() { remove(); }
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;

  const std::string& path() const { return path_; }
  void remove() const {
    std::error_code ignored;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove_all(path_ + suffix, ignored);
  }

 private:
  std::string path_;
};

constexpr std::string_view kPassing = ".partiel-";  // And the number of the process.

/// Removes what tools that were killed left beside `path`.
void removeLeftovers(const fs::path& path) {
  const std::string begin = path.filename().string() + std::string(kPassing);
  std::error_code ignored;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(begin)) continue;
    const long process = std::strtol(name.c_str() + begin.size(), nullptr, 10);
    if (process > 0 && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH)
      fs::remove_all(entry.path(), ignored);
  }
}

[[noreturn]] void refuse(const std::string& path) {
  throw StoreError("« " + path + " » existe déjà et n'a pas été touché. Choisissez un autre nom.");
}

[[noreturn]] void raiseSystem(const std::string& path) {
  throw StoreError("« " + path +
                       " » ne peut pas être écrit. Vérifiez que son dossier existe, que vous avez le "
                       "droit d'y écrire, et qu'il reste de la place.",
                   std::strerror(errno));
}

/// Gives `from` the name `to`, never over an existing file.
void giveName(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  if (errno == EEXIST) refuse(to);
  // Some network file systems know only the plain form.
  if (errno != EINVAL && errno != ENOSYS) raiseSystem(to);
  if (fs::exists(fs::symlink_status(to))) refuse(to);
  if (::rename(from.c_str(), to.c_str()) != 0) raiseSystem(to);
}

class SqliteFiller : public Filler {
 public:
  explicit SqliteFiller(sqlite::Connection& connection) : connection_(connection) {}

  Inserter inserter(std::string_view table, const std::vector<std::string_view>& columns) override {
    auto statement = std::make_shared<sqlite::Statement>(
        connection_.prepare(insertionText(table, columns, sqlite::engine())));
    return Inserter([statement](std::span<const Value> row) {
      statement->bind(row);
      while (statement->step()) {
      }
    });
  }

  void readBack(std::string_view table, const std::vector<std::string_view>& columns,
                const Reading& read) override {
    std::string names;
    std::vector<FieldType> types;
    for (const std::string_view column : columns) {
      names += (names.empty() ? "" : ", ") + sqlite::engine().quotedName(column);
      types.push_back(schema::table(table).find(column)->type);
    }
    sqlite::Statement rows =
        connection_.prepare("SELECT " + names + " FROM " + sqlite::engine().quotedName(table) + " ORDER BY " +
                            std::string(schema::kRowNumber));
    std::vector<Value> row(columns.size());
    while (rows.step()) {
      for (std::size_t i = 0; i < row.size(); ++i) row[i] = rows.value(static_cast<int>(i), types[i]);
      read(row);
    }
  }

 private:
  sqlite::Connection& connection_;
};

}  // namespace

void forceToDisk(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) raiseSystem(path);
  const bool done = ::fsync(file) == 0;
  ::close(file);
  if (!done) raiseSystem(path);
}

void requireFree(const std::string& path) {
  if (fs::exists(fs::symlink_status(path))) refuse(path);
}

std::string besideAt(DateTime moment, const std::string& path, std::string_view mark,
                     std::string_view ending) {
  std::string name = moment.stored().substr(0, 19);  // YYYY-MM-DD HH:MM:SS
  std::erase(name, ':');
  name[10] = '-';
  const fs::path whole = path;
  return whole.parent_path() /
         (whole.stem().string() + '.' + std::string(mark) + '-' + name + std::string(ending));
}

void publishFile(const std::string& path, const std::function<void(const std::string&)>& build) {
  requireFree(path);
  removeLeftovers(path);
  const Passing passing(path + std::string(kPassing) + std::to_string(::getpid()));
  passing.remove();
  build(passing.path());
  forceToDisk(passing.path());
  giveName(passing.path(), path);
  const fs::path folder = fs::path(path).parent_path();
  forceToDisk(folder.empty() ? "." : folder.string());
}

void createStore(const std::string& path, std::string_view password, const Filling& fill) {
  publishFile(path, [&](const std::string& temporary) {
    sqlite::Connection connection(temporary, path, sqlite::Connection::Role::Maker);
    // Nobody sees the file before it has its name, so it needs neither a journal nor a write in order.
    for (const char* pragma : {"journal_mode = OFF", "synchronous = OFF", "locking_mode = EXCLUSIVE",
                               "cache_size = -262144", "temp_store = MEMORY", "encoding = 'UTF-8'"})
      connection.execute("PRAGMA " + std::string(pragma));
    connection.execute("PRAGMA application_id = " + std::to_string(schema::kApplicationId));
    connection.execute("BEGIN");
    for (const Definition& table : tableDefinitions(sqlite::engine())) connection.execute(table.text);
    for (const std::string& row : recordStatements(sqlite::engine(), password)) connection.execute(row);
    SqliteFiller filler(connection);
    if (fill) fill(filler);
    for (const Definition& one : auxiliaryDefinitions(sqlite::engine())) connection.execute(one.text);
    connection.execute("COMMIT");
    connection.execute("PRAGMA locking_mode = NORMAL");
    if (connection.text("PRAGMA journal_mode = WAL") != "wal")
      throw StoreError(
          "Ce dossier ne permet pas le journal partagé dont la base a besoin. Choisissez un disque local.");
    connection.close();
  });
}

}  // namespace tavoline::tool
