#pragma once

#include <functional>

namespace tavoline::test {

/// Stands between SQLite and the disk for as long as it lives, and makes the disk fail on demand. Only files
/// that are opened while it lives are concerned; they must be closed before it goes. One at a time.
class StoreVfs {
 public:
  StoreVfs();
  ~StoreVfs();
  StoreVfs(const StoreVfs&) = delete;
  StoreVfs& operator=(const StoreVfs&) = delete;

  /// From now on, writes fail with the SQLite result `code` after `writes` more have succeeded.
  void failWrites(int code, int writes = 0);
  void failSyncs(int code);
  void heal();
  /// From now on, waiting for another process takes no time, and its patience is at an end at once.
  void skipWaiting();
  /// Calls `then`, once, when SQLite first waits for another process.
  void whenWaiting(std::function<void()> then);
  int syncs() const;  ///< How many times a file was forced to the disk so far.
};

}  // namespace tavoline::test
