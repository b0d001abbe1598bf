#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tavoline::tool::jet {

/// Messages of a process that reads a file which may be broken: it may crash, loop or ask for any memory
/// without taking this one along. It ends with the object at the latest.
class ReadingProcess {
 public:
  using Sending = std::function<void(std::string_view message)>;
  struct Limits {
    std::uint64_t memory = 0;   ///< Bytes, beyond what this process has mapped.
    std::uint64_t seconds = 0;  ///< Of computing.
  };
  /// Starts it: `work` runs there, sends messages, and must not throw. Throws StoreError where the system
  /// gives no process.
  ReadingProcess(const std::function<void(const Sending&)>& work, Limits limits);
  ~ReadingProcess();
  ReadingProcess(const ReadingProcess&) = delete;
  ReadingProcess& operator=(const ReadingProcess&) = delete;

  /// The next message, valid until the one after it; false at the end, however it came.
  bool next(std::string_view& message);

 private:
  bool fill(std::size_t bytes);

  pid_t process_ = -1;
  int pipe_ = -1;
  std::string buffer_;
  std::size_t at_ = 0;
};

}  // namespace tavoline::tool::jet
