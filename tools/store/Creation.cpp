#include "tools/store/Creation.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "data/value/Errors.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

/// Removes a file in the making, and the engine's files beside it, unless it got its name.
class Passing {
 public:
  explicit Passing(std::string path) : path_(std::move(path)) {}
  ~Passing() { remove(); }
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;

  const std::string& path() const { return path_; }
  void remove() const {
    std::error_code ignored;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(path_ + suffix, ignored);
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
      fs::remove(entry.path(), ignored);
  }
}

[[noreturn]] void refuse(const std::string& path) {
  throw StoreError("« " + path + " » existe déjà et n'a pas été touché. Choisissez un autre nom.");
}

[[noreturn]] void raiseSystem(const std::string& path) {
  throw StoreError("« " + path + " » ne peut pas être écrit : " + std::strerror(errno) +
                   ". Vérifiez le dossier et ses droits.");
}

void forceToDisk(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) raiseSystem(path);
  const bool done = ::fsync(file) == 0;
  ::close(file);
  if (!done) raiseSystem(path);
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

}  // namespace

void publishFile(const std::string& path, const std::function<void(const std::string&)>& build) {
  if (fs::exists(fs::symlink_status(path))) refuse(path);
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
    Database database(temporary, Database::Mode::Create);
    // Nobody sees the file before it has its name, so it needs neither a journal nor a write in order.
    for (const char* pragma : {"journal_mode = OFF", "synchronous = OFF", "locking_mode = EXCLUSIVE",
                               "cache_size = -262144", "temp_store = MEMORY", "encoding = 'UTF-8'"})
      database.execute("PRAGMA " + std::string(pragma));
    database.execute("PRAGMA application_id = " + std::to_string(schema::kApplicationId));
    database.execute("BEGIN");
    for (const std::string& sql : schema::tableDefinitions(schema::sqliteEngine())) database.execute(sql);
    for (const std::string& sql : schema::recordStatements(password)) database.execute(sql);
    if (fill) fill(database);
    for (const std::string& sql : schema::indexDefinitions(schema::sqliteEngine())) database.execute(sql);
    database.execute("COMMIT");
    database.execute("PRAGMA locking_mode = NORMAL");
    if (database.text("PRAGMA journal_mode = WAL") != "wal")
      throw StoreError(
          "Ce dossier ne permet pas le journal partagé dont la base a besoin. Choisissez un disque local.");
    database.close();
  });
}

}  // namespace tavoline::tool
