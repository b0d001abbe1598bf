#include "support/StoreProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace tavoline::test {

namespace {

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  return ends;
}

bool receive(int pipe) {
  char byte = 0;
  ssize_t got = 0;
  do got = ::read(pipe, &byte, 1);
  while (got < 0 && errno == EINTR);
  return got == 1;
}

bool send(int pipe) {
  return ::write(pipe, "+", 1) == 1;
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
  return send(out_) && receive(in_);
}

StoreProcess::StoreProcess(const std::function<void(Turns&)>& body) {
  const auto there = makePipe(), back = makePipe();
  pid_ = ::fork();
  if (pid_ < 0) throw std::runtime_error("no process");
  if (pid_ == 0) {
    ::close(there[1]);
    ::close(back[0]);
    Turns turns(there[0], back[1]);
    runAndLeave([&] {
      body(turns);
      send(back[1]);
    });
  }
  ::close(there[0]);
  ::close(back[1]);
  toOther_ = there[1];
  fromOther_ = back[0];
  waitForTurn();
}

StoreProcess::~StoreProcess() {
  ::close(toOther_);
  waitFor(pid_);
  ::close(fromOther_);
}

void StoreProcess::turn() {
  if (!send(toOther_)) throw std::runtime_error("the other process has gone");
  waitForTurn();
}

void StoreProcess::waitForTurn() {
  if (!receive(fromOther_)) throw std::runtime_error("the other process failed");
}

int runElsewhere(const std::function<void()>& body) {
  const pid_t pid = ::fork();
  if (pid < 0) throw std::runtime_error("no process");
  if (pid == 0) runAndLeave(body);
  return waitFor(pid);
}

}  // namespace tavoline::test
