#include "tools/store/exchange/KeysSeen.h"

#include <iterator>

namespace tavoline::tool {

bool KeysSeen::add(const Value& key) {
  if (key.isNull()) return true;
  if (key.isInteger()) return addNumber(key.toInteger());
  return texts_.insert(key.text()).second;
}

bool KeysSeen::addNumber(std::int64_t number) {
  const auto next = runs_.upper_bound(number);
  const auto before = next == runs_.begin() ? runs_.end() : std::prev(next);
  if (before != runs_.end() && before->second >= number) return false;
  const bool joinsBefore = before != runs_.end() && before->second == number - 1;
  const bool joinsNext = next != runs_.end() && next->first - 1 == number;
  const std::int64_t last = joinsNext ? next->second : number;
  if (joinsNext) runs_.erase(next);
  if (joinsBefore)
    before->second = last;
  else
    runs_.emplace(number, last);
  return true;
}

}  // namespace tavoline::tool
