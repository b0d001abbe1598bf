#include "data/store/sqlite/Notice.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <fstream>

namespace tavoline::sqlite {

Notice::Notice(const FileIdentity& store) : store_(store) {}

Notice::~Notice() {
  silence();
}

std::string Notice::topic(std::int64_t key) const {
  return "tavoline/" + std::to_string(store_.device) + '-' + std::to_string(store_.number) + '/' +
         std::to_string(key) + '/';
}

void Notice::say(std::int64_t key) {
  silence();
  static std::atomic<int> serial = 0;  // a process may have a store open twice
  const std::string name = topic(key) + std::to_string(::getpid()) + '.' + std::to_string(++serial);
  sockaddr_un address{};  // a name behind a zero is no file
  address.sun_family = AF_UNIX;
  name.copy(address.sun_path + 1, sizeof address.sun_path - 1);
  socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket_ < 0) return;
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  if (::bind(socket_, reinterpret_cast<const sockaddr*>(&address), size) == 0) said_ = name;
}

void Notice::silence() {
  if (socket_ >= 0) ::close(socket_);
  socket_ = -1;
  said_.clear();
}

std::size_t Notice::othersSaying(std::int64_t key) const {
  const std::string wanted = '@' + topic(key), own = '@' + said_;
  std::ifstream sockets("/proc/net/unix");
  std::size_t others = 0;
  for (std::string line; std::getline(sockets, line);) {
    const auto at = line.find('@');
    if (at != line.npos && line.compare(at, wanted.size(), wanted) == 0 && line.substr(at) != own) ++others;
  }
  return others;
}

}  // namespace tavoline::sqlite
