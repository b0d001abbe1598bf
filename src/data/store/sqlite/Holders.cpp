#include "data/store/sqlite/Holders.h"

#include <sys/sysmacros.h>

#include <fstream>
#include <map>
#include <sstream>

namespace tavoline::sqlite {

namespace {

// Bytes of the shared memory on which the engine's processes hold locks.
constexpr long firstMark = 123, lastMark = 127;  // reading: in the file, then at four places of the log
constexpr long present = 128;                    // as long as the store is open

struct Lock {
  pid_t process = 0;
  long first = 0, last = 0;
};

// A line as "1: POSIX  ADVISORY  READ 1234 fd:01:5678 123 123".
std::optional<Lock> lockOn(const FileIdentity& file, const std::string& line) {
  std::istringstream words(line);
  std::string number, kind, how, mode, where, first, last;
  Lock lock;
  if (!(words >> number >> kind >> how >> mode >> lock.process >> where >> first >> last))
    return std::nullopt;
  unsigned long inode = 0;
  unsigned int deviceMajor = 0, deviceMinor = 0;
  char colon = 0;
  std::istringstream place(where);
  if (!(place >> std::hex >> deviceMajor >> colon >> deviceMinor >> colon >> std::dec >> inode))
    return std::nullopt;
  if (inode != file.number || deviceMajor != major(file.device) || deviceMinor != minor(file.device))
    return std::nullopt;
  lock.first = std::stol(first);
  lock.last = last == "EOF" ? present : std::stol(last);
  return lock;
}

std::string programOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

}  // namespace

std::vector<Holder> holdersOf(const std::string& store) {
  const auto file = FileIdentity::of(store), memory = FileIdentity::of(store + "-shm");
  std::map<pid_t, Holder> holders;
  if (!file || !memory) return {};
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    const auto lock = lockOn(*memory, line);
    if (!lock) continue;
    Holder& holder = holders[lock->process];
    for (long byte = lock->first; byte <= lock->last; ++byte) {
      if (byte < firstMark || byte > lastMark) continue;
      ++holder.marks;
      if (byte > firstMark) holder.inLog = true;
    }
  }
  std::vector<Holder> found;
  for (auto& [process, holder] : holders) {
    holder.process = process;
    holder.program = programOf(process);
    holder.said = HolderRecord::read(process, *file);
    found.push_back(std::move(holder));
  }
  return found;
}

}  // namespace tavoline::sqlite
