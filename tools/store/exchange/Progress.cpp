#include "tools/store/exchange/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tavoline::tool {
namespace {

constexpr int kWidth = 40, kLookEvery = 1024;  // characters, rows
constexpr std::chrono::milliseconds kBetween{100};

}  // namespace

Progress::Progress() : shown_(::isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
  if (shown_) std::fputs("\r\033[K", stderr);
}

void Progress::step() {
  if (++done_ % kLookEvery != 0 || !shown_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - drawn_ < kBetween) return;
  drawn_ = now;
  draw();
}

void Progress::draw() const {
  const double share =
      expected_ > 0 ? std::min(1.0, static_cast<double>(done_) / static_cast<double>(expected_)) : 0;
  const auto full = static_cast<std::size_t>(share * kWidth);
  const std::string bar = std::string(full, '#') + std::string(kWidth - full, '.');
  std::fprintf(stderr, "\r\033[K[%s] %3d %%  %s", bar.c_str(), static_cast<int>(share * 100), what_.c_str());
  std::fflush(stderr);
}

}  // namespace tavoline::tool
