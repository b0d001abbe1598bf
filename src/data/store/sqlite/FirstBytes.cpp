#include "data/store/sqlite/FirstBytes.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>

namespace tavoline::sqlite {

namespace {

struct CloseFile {
  void operator()(sqlite3_file* file) const {
    if (file->pMethods) file->pMethods->xClose(file);
    sqlite3_free(file);
  }
};
using File = std::unique_ptr<sqlite3_file, CloseFile>;

struct FreeName {
  void operator()(const char* name) const { sqlite3_free_filename(name); }
};

}  // namespace

std::optional<std::string> firstBytes(const std::string& path, std::size_t count) {
  return bytesAt(path, 0, count);
}

std::optional<std::string> bytesAt(const std::string& path, std::uint64_t at, std::size_t count) {
  sqlite3_vfs* const disk = sqlite3_vfs_find(nullptr);
  const std::unique_ptr<const char, FreeName> name(sqlite3_create_filename(path.c_str(), "", "", 0, nullptr));
  const File file(static_cast<sqlite3_file*>(sqlite3_malloc(disk->szOsFile)));
  file->pMethods = nullptr;
  int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB;
  if (disk->xOpen(disk, name.get(), file.get(), flags, &flags) != SQLITE_OK) return std::nullopt;

  sqlite3_int64 size = 0;
  if (file->pMethods->xFileSize(file.get(), &size) != SQLITE_OK) return std::nullopt;
  const auto start = static_cast<sqlite3_int64>(at);
  std::string bytes(std::min(count, static_cast<std::size_t>(std::max(size - start, sqlite3_int64{0}))),
                    '\0');
  const int length = static_cast<int>(bytes.size());
  if (file->pMethods->xRead(file.get(), bytes.data(), length, start) != SQLITE_OK) return std::nullopt;
  return bytes;
}

}  // namespace tavoline::sqlite
