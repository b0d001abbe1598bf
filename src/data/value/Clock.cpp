#include "data/value/Clock.h"

#include <chrono>
#include <ctime>
#include <utility>

namespace tavoline {
namespace {

std::function<DateTime()>& replacement() {
  static std::function<DateTime()> source;
  return source;
}

DateTime systemNow() {
  using namespace std::chrono;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(floor<std::chrono::seconds>(now));
  const auto milli = duration_cast<milliseconds>(now - floor<std::chrono::seconds>(now)).count();
  std::tm local{};
  localtime_r(&seconds, &local);
  const int second = local.tm_sec > 59 ? 59 : local.tm_sec;  // a leap second has no place of its own
  return DateTime::of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                      second, static_cast<int>(milli));
}

}  // namespace

DateTime Clock::now() {
  return replacement() ? replacement()() : systemNow();
}

void Clock::set(std::function<DateTime()> source) {
  replacement() = std::move(source);
}

}  // namespace tavoline
