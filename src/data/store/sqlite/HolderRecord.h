#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tavoline::sqlite {

class Readers;

/// Which file a path stands for, whatever it is called.
struct FileIdentity {
  dev_t device = 0;
  ino_t number = 0;
  static std::optional<FileIdentity> of(const std::string& path);
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// What a process holds of a store, as it last said.
struct HolderEntry {
  using Moment = std::chrono::system_clock::time_point;
  FileIdentity store;
  Moment written;                ///< Seconds.
  std::size_t connections = 0;   ///< With the writing one.
  std::vector<Moment> versions;  ///< Since when each is held, the oldest first.
};

/// Says beside no store, but in the runtime folder of the user, what this process holds of it, for whoever
/// asks. Written in quiet moments only, and only where it changed; goes with the process. Nothing is said
/// where there is no place for it.
class HolderRecord {
 public:
  explicit HolderRecord(const std::string& store);
  ~HolderRecord();
  HolderRecord(const HolderRecord&) = delete;
  HolderRecord& operator=(const HolderRecord&) = delete;

  void write(const Readers& readers) noexcept;

  /// What the process said of the store; nothing if it said nothing, or to nobody but its own user.
  static std::optional<HolderEntry> read(pid_t process, const FileIdentity& store);

 private:
  FileIdentity store_;
  std::string path_, said_;
};

}  // namespace tavoline::sqlite
