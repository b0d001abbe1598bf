#include "data/store/sqlite/Log.h"

#include <algorithm>

namespace tavoline::sqlite {

namespace {

using std::chrono::milliseconds;

// A workstation that was killed reads the log at its next start, half a millisecond for each megabyte.
constexpr int longLog = 256;      // pages: 1 MB
constexpr int pressingLog = 448;  // pages: 1.8 MB
constexpr milliseconds forReaders{100};

}  // namespace

Log::Log(Connection& writer) : writer_(writer), tryAt_(longLog) {
  // In place of the engine's own hook, which folds.
  sqlite3_wal_hook(writer_.handle(), committed, this);
}

int Log::committed(void* self, sqlite3*, const char*, int pages) {
  auto& log = *static_cast<Log*>(self);
  if (pages < log.pages_) log.tryAt_ = longLog;  // it has started over
  log.pages_ = pages;
  return SQLITE_OK;
}

bool Log::isPressing() const {
  return pages_ >= pressingLog;
}

bool Log::checkpoint(int mode) {
  int logged = 0, folded = 0;
  return sqlite3_wal_checkpoint_v2(writer_.handle(), nullptr, mode, &logged, &folded) == SQLITE_OK &&
         logged == folded;
}

bool Log::fold() {
  const Connection::Patience none(writer_, milliseconds(0));
  return checkpoint(SQLITE_CHECKPOINT_PASSIVE);
}

bool Log::truncate() {
  const Connection::Patience none(writer_, milliseconds(0));
  return checkpoint(SQLITE_CHECKPOINT_TRUNCATE);
}

bool Log::foldForAll() {
  const Connection::Patience some(writer_, forReaders);
  return checkpoint(SQLITE_CHECKPOINT_RESTART);
}

void Log::triedInVain() {
  tryAt_ = std::max(longLog, pages_ + longLog / 4);
}

}  // namespace tavoline::sqlite
