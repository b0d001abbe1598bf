#include "tools/store/Publishing.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <tuple>
#include <vector>

#include "data/value/Clock.h"
#include "data/value/Errors.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr std::string_view kPassing = ".partiel-";  // And the number of the process.
constexpr std::string_view kBeside[] = {"-wal", "-shm", "-journal"};
constexpr std::string_view kLogs[] = {"-wal", "-journal"};

[[noreturn]] void raiseSystem(const std::string& path) {
  throw StoreError("« " + path +
                       " » ne peut pas être écrit. Vérifiez que son dossier existe, que vous avez le "
                       "droit d'y écrire, et qu'il reste de la place.",
                   std::strerror(errno));
}

[[noreturn]] void refuseTaken(const std::string& path) {
  throw StoreError("« " + path + " » existe déjà et n'a pas été touché. Choisissez un autre nom.");
}

[[noreturn]] void refuseBeside(const std::string& log, const std::string& path) {
  throw StoreError(
      "« " + log + " » est resté d'une base qui portait le nom « " + path +
      " » : ses dernières écritures s'y trouvent, et elles abîmeraient celle qui viendrait à sa "
      "place. Rien n'a été fait. Remettez cette base sous son nom, ou remettez une sauvegarde par "
      "« tavoline-store restore SAUVEGARDE " +
      path + " », qui met tout de côté ; ou choisissez un autre nom.");
}

std::string absolute(const std::string& path) {
  return fs::absolute(path).string();
}

bool stands(const std::string& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

enum class Kind { File, Folder };

/// A file or a folder in the making, which is removed with the engine's files beside it unless it got its
/// name.
class Passing {
 public:
  Passing(const std::string& path, Kind kind, const Access& access) : path_(make(path, kind)) {
    if (kind == Kind::Folder) return;
    const int code = [&] {
      if (access.group && ::chown(path_.c_str(), static_cast<uid_t>(-1), *access.group) != 0) return -1;
      if (access.owner && ::geteuid() == 0 &&
          ::chown(path_.c_str(), *access.owner, static_cast<gid_t>(-1)) != 0)
        return -1;
      return ::chmod(path_.c_str(), access.mode);
    }();
    if (code == 0) return;
    remove();
    throw StoreError("« " + path +
                         " » ne peut pas être ouvert à ce groupe : il faut en faire partie, ou être "
                         "l'administrateur de l'ordinateur (sudo).",
                     std::strerror(errno));
  }
  ~Passing() { remove(); }
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;

  const std::string& path() const { return path_; }

 private:
  // Nobody else's file is opened, and nobody else opens this one while it is empty.
  static std::string make(const std::string& path, Kind kind) {
    const std::string start = absolute(path) + std::string(kPassing) + std::to_string(::getpid());
    for (int attempt = 0;; ++attempt) {
      std::string name = attempt ? start + '.' + std::to_string(attempt) : start;
      if (makeNew(name, kind)) return name;
      if (errno != EEXIST || attempt == 99) raiseSystem(path);
    }
  }
  static bool makeNew(const std::string& name, Kind kind) {
    if (kind == Kind::Folder) return ::mkdir(name.c_str(), 0700) == 0;
    const int file = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
  }
  void remove() const {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    for (const std::string_view suffix : kBeside) fs::remove(path_ + std::string(suffix), ignored);
  }

  std::string path_;
};

/// Whether it is what a tool left when it was killed: its name to the letter, a process that has gone, and a
/// folder of its making or what a store in the making begins with.
bool isLeftover(const fs::directory_entry& entry, const std::string& begin) {
  std::error_code ignored;
  const std::string name = entry.path().filename().string();
  if (!name.starts_with(begin) || entry.is_symlink(ignored)) return false;
  pid_t process = 0;
  const char* const end = name.data() + name.size();
  auto [stop, error] = std::from_chars(name.data() + begin.size(), end, process);
  if (error == std::errc() && stop != end && *stop == '.') {
    int attempt = 0;
    std::tie(stop, error) = [&] {
      const auto read = std::from_chars(stop + 1, end, attempt);
      return std::pair(read.ptr, read.ec);
    }();
  }
  if (error != std::errc() || stop != end || process <= 0) return false;
  if (::kill(process, 0) == 0 || errno != ESRCH) return false;
  struct stat found = {};
  if (::lstat(entry.path().c_str(), &found) != 0 || found.st_uid != ::geteuid()) return false;
  if (S_ISDIR(found.st_mode)) return (found.st_mode & 0777) == 0700;
  std::ifstream file(entry.path(), std::ios::binary);
  char head[16] = {};
  file.read(head, sizeof head);
  return file.gcount() == 0 || std::string_view(head, sizeof head) == "SQLite format 3\0"sv;
}

/// Removes what tools that were killed left beside `path`.
void removeLeftovers(const std::string& path) {
  const fs::path whole = absolute(path);
  const std::string begin = whole.filename().string() + std::string(kPassing);
  std::error_code ignored;
  std::vector<fs::path> left;
  for (const fs::directory_entry& entry : fs::directory_iterator(whole.parent_path(), ignored))
    if (isLeftover(entry, begin)) left.push_back(entry.path());
  for (const fs::path& file : left) {
    fs::remove_all(file, ignored);
    for (const std::string_view suffix : kBeside) fs::remove(file.string() + std::string(suffix), ignored);
  }
}

void forceFolderToDisk(const std::string& path) {
  tool::forceToDisk(fs::path(absolute(path)).parent_path().string());
}

/// Gives `from` the name `to`, never over an existing file.
void giveName(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  if (errno == EEXIST) refuseTaken(to);
  // Some network file systems know only the plain form.
  if (errno != EINVAL && errno != ENOSYS) raiseSystem(to);
  if (stands(to)) refuseTaken(to);
  if (::rename(from.c_str(), to.c_str()) != 0) raiseSystem(to);
}

void publish(const std::string& path, const Passing& passing, const Build& build) {
  build(passing.path());
  forceToDisk(passing.path());
  requireFree(path);
  giveName(passing.path(), path);
  forceFolderToDisk(path);
}

}  // namespace

Access Access::ofGroup(const std::string& group) {
  const struct group* const found = ::getgrnam(group.c_str());
  if (!found)
    throw StoreError("Cet ordinateur ne connaît pas le groupe « " + group +
                     " ». Créez-le par « sudo groupadd " + group +
                     " », puis faites-y entrer chaque utilisateur.");
  Access access;
  access.mode = 0660;
  access.group = found->gr_gid;
  return access;
}

Access Access::like(const std::string& path) {
  Access access;
  struct stat found = {};
  if (::stat(path.c_str(), &found) != 0) return access;
  access.owner = found.st_uid;
  // Files on a stick belong to a group that means nothing, to whom everything is open.
  if ((found.st_mode & 0060) != 0060 || (found.st_mode & 0007) != 0) return access;
  access.mode = 0660;
  access.group = found.st_gid;
  return access;
}

void forceToDisk(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) raiseSystem(path);
  const bool done = ::fsync(file) == 0;
  ::close(file);
  if (!done) raiseSystem(path);
}

void requireFree(const std::string& path) {
  if (stands(path)) refuseTaken(path);
  for (const std::string_view suffix : kLogs) {
    const std::string log = path + std::string(suffix);
    if (stands(log)) refuseBeside(log, path);
  }
}

void publishFile(const std::string& path, const Build& build, const Access& access) {
  requireFree(path);
  removeLeftovers(path);
  publish(path, Passing(path, Kind::File, access), build);
}

void publishFolder(const std::string& path, const Build& build) {
  requireFree(path);
  removeLeftovers(path);
  publish(path, Passing(path, Kind::Folder, {}), build);
}

std::string replaceFile(const std::string& path, const Build& build, const Access& access) {
  removeLeftovers(path);
  const Passing passing(path, Kind::File, access);
  build(passing.path());
  forceToDisk(passing.path());
  const bool any = stands(path) || std::ranges::any_of(kBeside, [&](std::string_view suffix) {
                     return stands(path + std::string(suffix));
                   });
  std::string aside =
      any ? besideAt(Clock::now(), path, "remplacee", fs::path(path).extension().string()) : std::string();
  // The file first: without it its log does no harm, and it without its log would lack the latest writes.
  if (stands(path)) giveName(path, aside);
  for (const std::string_view suffix : kBeside)
    if (const std::string log = path + std::string(suffix); stands(log))
      giveName(log, aside + std::string(suffix));
  giveName(passing.path(), path);
  forceFolderToDisk(path);
  return aside;
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

}  // namespace tavoline::tool
