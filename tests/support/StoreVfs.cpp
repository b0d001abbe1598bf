#include "support/StoreVfs.h"

#include <sqlite3.h>

#include <stdexcept>
#include <utility>

namespace tavoline::test {

namespace {

struct Disk {
  sqlite3_vfs* real = nullptr;
  sqlite3_vfs shim{};
  sqlite3_io_methods methods{};
  int writeCode = SQLITE_OK, syncCode = SQLITE_OK;
  int writesLeft = 0;
  int syncs = 0;
  bool skipsWaiting = false;
  std::function<void()> whenWaiting;
};
Disk disk;

// The file of the real disk, which stands behind this head in the same block of memory.
sqlite3_file* behind(sqlite3_file* file) {
  return file + 1;
}

// SQLITE_OK while the disk is well.
int writeVerdict() {
  if (disk.writeCode == SQLITE_OK) return SQLITE_OK;
  if (disk.writesLeft > 0) return --disk.writesLeft, SQLITE_OK;
  return disk.writeCode;
}

int write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
  if (const int code = writeVerdict()) return code;
  return behind(file)->pMethods->xWrite(behind(file), bytes, count, at);
}

int truncate(sqlite3_file* file, sqlite3_int64 size) {
  if (const int code = writeVerdict()) return code;
  return behind(file)->pMethods->xTruncate(behind(file), size);
}

int sync(sqlite3_file* file, int flags) {
  if (disk.syncCode != SQLITE_OK) return disk.syncCode;
  ++disk.syncs;
  return behind(file)->pMethods->xSync(behind(file), flags);
}

// All else goes through as it is.
template <auto method, class... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
  return (behind(file)->pMethods->*method)(behind(file), arguments...);
}

void barrier(sqlite3_file* file) {
  behind(file)->pMethods->xShmBarrier(behind(file));
}

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* flagsOut) {
  file->pMethods = nullptr;
  const int code = disk.real->xOpen(disk.real, name, behind(file), flags, flagsOut);
  if (code == SQLITE_OK) file->pMethods = &disk.methods;
  return code;
}

int wait(sqlite3_vfs*, int microseconds) {
  if (const auto then = std::exchange(disk.whenWaiting, nullptr)) then();
  return disk.skipsWaiting ? microseconds : disk.real->xSleep(disk.real, microseconds);
}

void install() {
  using M = sqlite3_io_methods;
  disk.methods = {3,
                  pass<&M::xClose>,
                  pass<&M::xRead, void*, int, sqlite3_int64>,
                  write,
                  truncate,
                  sync,
                  pass<&M::xFileSize, sqlite3_int64*>,
                  pass<&M::xLock, int>,
                  pass<&M::xUnlock, int>,
                  pass<&M::xCheckReservedLock, int*>,
                  pass<&M::xFileControl, int, void*>,
                  pass<&M::xSectorSize>,
                  pass<&M::xDeviceCharacteristics>,
                  pass<&M::xShmMap, int, int, int, void volatile**>,
                  pass<&M::xShmLock, int, int, int>,
                  barrier,
                  pass<&M::xShmUnmap, int>,
                  pass<&M::xFetch, sqlite3_int64, int, void**>,
                  pass<&M::xUnfetch, sqlite3_int64, void*>};
  disk.shim = *disk.real;
  disk.shim.zName = "tavoline-faults";
  disk.shim.pNext = nullptr;
  disk.shim.szOsFile = static_cast<int>(sizeof(sqlite3_file)) + disk.real->szOsFile;
  disk.shim.xOpen = openFile;
  disk.shim.xSleep = wait;
}

}  // namespace

StoreVfs::StoreVfs() {
  disk = Disk();
  disk.real = sqlite3_vfs_find(nullptr);
  install();
  if (sqlite3_vfs_register(&disk.shim, 1) != SQLITE_OK) throw std::runtime_error("no faulty disk");
}

StoreVfs::~StoreVfs() {
  sqlite3_vfs_unregister(&disk.shim);
  sqlite3_vfs_register(disk.real, 1);
}

void StoreVfs::failWrites(int code, int writes) {
  disk.writeCode = code;
  disk.writesLeft = writes;
}

void StoreVfs::failSyncs(int code) {
  disk.syncCode = code;
}

void StoreVfs::heal() {
  disk.writeCode = disk.syncCode = SQLITE_OK;
}

void StoreVfs::skipWaiting() {
  disk.skipsWaiting = true;
}

void StoreVfs::whenWaiting(std::function<void()> then) {
  disk.whenWaiting = std::move(then);
}

int StoreVfs::syncs() const {
  return disk.syncs;
}

}  // namespace tavoline::test
