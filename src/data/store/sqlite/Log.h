#pragma once

#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

/// The write-ahead log, as a process sees it that writes to it. Every process on the store sees the same
/// length, since it is told with each commit. Nobody folds the log by committing: whoever holds a version
/// that stands in the log would make each commit walk it in vain.
class Log {
 public:
  explicit Log(Connection& writer);
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  /// Long enough to be folded between two gestures, and not tried in vain just before.
  bool isLong() const { return pages_ >= tryAt_; }
  /// So long that all workstations let go of their versions before they write, until one of them has folded
  /// it.
  bool isPressing() const;

  bool fold();  ///< Moves into the file what versions still held allow. True if nothing is left. Never waits.
  bool truncate();  ///< Makes an empty file of a log in which nobody reads any more. Never waits.
  /// Folds all of it, and lets it start over; waits a moment for readers, and writers wait for it meanwhile.
  bool foldForAll();
  void triedInVain();  ///< It may grow some way before it is long again.

 private:
  static int committed(void* self, sqlite3*, const char*, int pages);
  bool checkpoint(int mode);

  Connection& writer_;
  int pages_ = 0;  // after the latest commit by this process; a page is 4096 bytes
  int tryAt_;
};

}  // namespace tavoline::sqlite
