#include "tools/store/jet/ReadingProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <utility>

#include "data/value/Errors.h"

namespace tavoline::tool::jet {
namespace {

constexpr std::size_t kChunk = 262144;
constexpr std::size_t kPrefix = sizeof(std::uint32_t);  // before each message

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kLimitsMemory = false;  // the sanitizer maps terabytes for itself
#else
constexpr bool kLimitsMemory = true;
#endif

void limit(__rlimit_resource resource, std::uint64_t most) {
  const rlimit both{most, most};
  ::setrlimit(resource, &both);
}

std::uint64_t mappedBytes() {
  std::uint64_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

void confine(const ReadingProcess::Limits& limits, pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(1);
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_CPU, limits.seconds);
  if (kLimitsMemory) limit(RLIMIT_AS, mappedBytes() + limits.memory);
  // What the library says on its way is in no language of this program.
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, standard);
}

void writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) ::_exit(1);  // Nobody reads any more.
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

[[noreturn]] void workIn(int file, const std::function<void(const ReadingProcess::Sending&)>& work) {
  std::string pending;
  work([&](std::string_view message) {
    const auto length = static_cast<std::uint32_t>(message.size());
    pending.append(reinterpret_cast<const char*>(&length), kPrefix);
    pending += message;
    if (pending.size() < kChunk) return;
    writeAll(file, pending);
    pending.clear();
  });
  writeAll(file, pending);
  ::_exit(0);
}

}  // namespace

ReadingProcess::ReadingProcess(const std::function<void(const Sending&)>& work, Limits limits) {
  int ends[2] = {-1, -1};
  const pid_t parent = ::getpid();
  if (::pipe2(ends, O_CLOEXEC) == 0) process_ = ::fork();
  if (process_ < 0)
    throw StoreError(
        "Le système ne permet pas de lancer la lecture. Fermez des programmes, puis recommencez.",
        std::strerror(errno));
  if (process_ == 0) {
    ::close(ends[0]);
    confine(limits, parent);
    workIn(ends[1], work);
  }
  ::close(ends[1]);
  pipe_ = ends[0];
}

ReadingProcess::~ReadingProcess() {
  ::close(pipe_);
  ::kill(process_, SIGKILL);
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

bool ReadingProcess::fill(std::size_t bytes) {
  if (buffer_.size() - at_ >= bytes) return true;
  buffer_.erase(0, std::exchange(at_, 0));
  while (buffer_.size() < bytes) {
    const std::size_t before = buffer_.size();
    buffer_.resize(before + kChunk);
    const ssize_t got = ::read(pipe_, buffer_.data() + before, kChunk);
    buffer_.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
    if (got == 0 || (got < 0 && errno != EINTR)) return false;
  }
  return true;
}

bool ReadingProcess::next(std::string_view& message) {
  if (!fill(kPrefix)) return false;
  std::uint32_t length = 0;
  std::memcpy(&length, buffer_.data() + at_, kPrefix);
  if (!fill(kPrefix + length)) return false;
  message = std::string_view(buffer_).substr(at_ + kPrefix, length);
  at_ += kPrefix + length;
  return true;
}

}  // namespace tavoline::tool::jet
