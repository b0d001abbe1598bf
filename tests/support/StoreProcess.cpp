#include "support/StoreProcess.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace tavoline::test {

namespace {

bool receive(int line) {
  char byte = 0;
  ssize_t got = 0;
  do got = ::read(line, &byte, 1);
  while (got < 0 && errno == EINTR);
  return got == 1;
}

// Where the other end has gone, it fails and raises no signal.
bool send(int line) {
  return ::send(line, "+", 1, MSG_NOSIGNAL) == 1;
}

// The body of a forked process: it must never return into the test program.
[[noreturn]] void runAndLeave(const std::function<void()>& body) {
  int status = 1;
  try {
    body();
    status = 0;
  } catch (const std::exception& error) {
    std::cerr << "other process: " << error.what() << std::endl;
  }
  ::_exit(status);
}

int waitFor(pid_t pid) {
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

}  // namespace

bool StoreProcess::Turns::next() {
  return send(line_) && receive(line_);
}

StoreProcess::StoreProcess(const std::function<void(Turns&)>& body) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) throw std::runtime_error("no line");
  pid_ = ::fork();
  if (pid_ < 0) throw std::runtime_error("no process");
  ::close(ends[pid_ == 0 ? 1 : 0]);
  line_ = ends[pid_ == 0 ? 0 : 1];
  if (pid_ == 0)
    runAndLeave([&] {
      Turns turns(line_);
      body(turns);
      send(line_);
    });
  waitForTurn();
}

StoreProcess::~StoreProcess() {
  ::shutdown(line_, SHUT_WR);
  waitFor(pid_);
  ::close(line_);
}

void StoreProcess::turn() {
  if (!send(line_)) throw std::runtime_error("the other process has gone");
  waitForTurn();
}

void StoreProcess::waitForTurn() {
  if (!receive(line_)) throw std::runtime_error("the other process failed");
}

int runElsewhere(const std::function<void()>& body) {
  const pid_t pid = ::fork();
  if (pid < 0) throw std::runtime_error("no process");
  if (pid == 0) runAndLeave(body);
  return waitFor(pid);
}

}  // namespace tavoline::test
