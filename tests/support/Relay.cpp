#include "support/Relay.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace tavoline::test {

namespace {

void atOnce(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

}  // namespace

Relay::Relay(std::string socket, std::chrono::microseconds eachWay)
    : socket_(std::move(socket)),
      eachWay_(eachWay),
      listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in here = {};
  here.sin_family = AF_INET;
  here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof here;
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&here), size) != 0 ||
      ::listen(listener_, 16) != 0 ||
      ::getsockname(listener_, reinterpret_cast<sockaddr*>(&here), &size) != 0 || ::pipe(bell_) != 0)
    throw std::runtime_error("no relay");
  port_ = ntohs(here.sin_port);
  thread_ = std::thread([this] { work(); });
}

Relay::~Relay() {
  ending_ = true;
  ring();
  thread_.join();
  endAll();
  for (const int end : {listener_, bell_[0], bell_[1]}) ::close(end);
}

void Relay::ring() {
  if (::write(bell_[1], "", 1) != 1) throw std::runtime_error("no relay");
}

void Relay::cableOut(bool out) {
  out_ = out;
  ring();
  seen_.wait(!out);
}

void Relay::work() {
  ::prctl(PR_SET_TIMERSLACK, 1UL);
  for (bool wasOut = false, out = false; !ending_; wasOut = out) {
    out = out_;
    if (wasOut && !out) endAll();
    seen_ = out;
    seen_.notify_all();
    std::vector<pollfd> waited = {{bell_[0], POLLIN, 0}};
    auto next = Moment::max();
    if (!out) {
      waited.push_back({listener_, POLLIN, 0});
      for (Link& link : links_)
        for (const Way& way : link.ways) {
          waited.push_back({way.from, POLLIN, 0});
          if (!way.under.empty()) next = std::min(next, way.under.front().first);
        }
    }
    timespec left = {};
    if (next != Moment::max()) {
      const auto time = std::max(next - std::chrono::steady_clock::now(), std::chrono::nanoseconds(0));
      left = {time / std::chrono::seconds(1), (time % std::chrono::seconds(1)).count()};
    }
    ::ppoll(waited.data(), waited.size(), next == Moment::max() ? nullptr : &left, nullptr);
    char passed[64];
    if (waited[0].revents && ::read(bell_[0], passed, sizeof passed) < 0) return;
    if (out) continue;
    std::size_t at = 2;
    for (Link& link : links_)
      for (Way& way : link.ways) {
        if (waited[at++].revents) take(link, way);
        give(link, way);
      }
    for (const Link& link : links_)
      if (link.over)
        for (const Way& way : link.ways) ::close(way.from);
    links_.remove_if([](const Link& link) { return link.over; });
    if (waited[1].revents) accept();
  }
}

void Relay::endAll() {
  for (const Link& link : links_)
    for (const Way& way : link.ways) ::close(way.from);
  links_.clear();
}

void Relay::accept() {
  const int near = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC),
            far = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un server = {};
  server.sun_family = AF_UNIX;
  std::strncpy(server.sun_path, socket_.c_str(), sizeof server.sun_path - 1);
  if (::connect(far, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0) {
    ::close(near);
    ::close(far);
    return;
  }
  atOnce(near);
  links_.push_back({{{near, far, {}}, {far, near, {}}}});
}

void Relay::take(Link& link, Way& way) const {
  char bytes[65536];
  const ssize_t count = ::recv(way.from, bytes, sizeof bytes, MSG_DONTWAIT);
  if (count > 0)
    way.under.emplace_back(std::chrono::steady_clock::now() + eachWay_,
                           std::string(bytes, static_cast<std::size_t>(count)));
  if (count == 0 || (count < 0 && errno != EAGAIN)) link.over = true;
}

void Relay::give(Link& link, Way& way) {
  while (!way.under.empty() && (link.over || way.under.front().first <= std::chrono::steady_clock::now())) {
    const std::string& bytes = way.under.front().second;
    if (::send(way.to, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size()))
      link.over = true;
    way.under.pop_front();
  }
}

}  // namespace tavoline::test
