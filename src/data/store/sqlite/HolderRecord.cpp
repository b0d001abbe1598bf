#include "data/store/sqlite/HolderRecord.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "data/store/sqlite/Readers.h"

namespace tavoline::sqlite {

namespace {

namespace fs = std::filesystem;
using Moment = HolderEntry::Moment;

std::string recordName(pid_t process, const FileIdentity& store) {
  return "versions-" + std::to_string(process) + '-' + std::to_string(store.number);
}

// Empty if there is no folder that belongs to this user alone.
std::string ownFolder() {
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string folder = runtime && *runtime ? std::string(runtime) + "/tavoline"
                                                 : "/tmp/tavoline-" + std::to_string(::getuid());
  ::mkdir(folder.c_str(), 0700);
  struct stat found = {};
  const bool ours = ::lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
                    found.st_uid == ::getuid() && (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
  return ours ? folder : std::string();
}

// Where any user's processes may have said something.
std::vector<std::string> allFolders() {
  std::vector<std::string> folders{ownFolder()};
  std::error_code ignored;
  for (const auto& user : fs::directory_iterator("/run/user", ignored))
    folders.push_back(user.path().string() + "/tavoline");
  for (const auto& entry : fs::directory_iterator("/tmp", ignored))
    if (entry.path().filename().string().starts_with("tavoline-")) folders.push_back(entry.path().string());
  return folders;
}

long seconds(Moment moment) {
  return static_cast<long>(std::chrono::system_clock::to_time_t(moment));
}

}  // namespace

std::optional<FileIdentity> FileIdentity::of(const std::string& path) {
  struct stat found = {};
  if (::stat(path.c_str(), &found) != 0) return std::nullopt;
  return FileIdentity{found.st_dev, found.st_ino};
}

HolderRecord::HolderRecord(const std::string& store)
    : store_(FileIdentity::of(store).value_or(FileIdentity())) {
  if (const std::string folder = ownFolder(); !folder.empty())
    path_ = folder + '/' + recordName(::getpid(), store_);
}

HolderRecord::~HolderRecord() {
  if (!said_.empty()) ::unlink(path_.c_str());
}

void HolderRecord::write(const Readers& readers) noexcept try {
  if (path_.empty()) return;
  std::vector<long> since;
  for (const Pin* pin : readers.pins()) since.push_back(seconds(pin->since()));
  std::sort(since.begin(), since.end());
  std::ostringstream text;
  text << store_.device << ' ' << store_.number << ' ' << 1 + readers.connections();
  for (const long moment : since) text << ' ' << moment;
  if (text.str() == said_) return;
  std::ofstream(path_) << seconds(std::chrono::system_clock::now()) << ' ' << text.str() << '\n';
  said_ = text.str();
} catch (const std::exception&) {
  // It is there for the curious.
}

std::optional<HolderEntry> HolderRecord::read(pid_t process, const FileIdentity& store) {
  for (const std::string& folder : allFolders()) {
    std::ifstream file(folder + '/' + recordName(process, store));
    HolderEntry entry;
    long written = 0;
    if (!(file >> written >> entry.store.device >> entry.store.number >> entry.connections)) continue;
    if (entry.store != store) continue;
    entry.written = std::chrono::system_clock::from_time_t(written);
    for (long since = 0; file >> since;)
      entry.versions.push_back(std::chrono::system_clock::from_time_t(since));
    return entry;
  }
  return std::nullopt;
}

}  // namespace tavoline::sqlite
