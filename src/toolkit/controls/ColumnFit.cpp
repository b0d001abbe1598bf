#include "toolkit/controls/ColumnFit.h"

#include <algorithm>
#include <numeric>

namespace tavoline {

namespace {

// Takes `excess` pixels from the widest columns, pixel by pixel, none below its floor; what could not be
// taken.
int shrink(std::vector<int>& widths, int excess, const std::vector<int>& floors) {
  for (; excess > 0; --excess) {
    std::size_t widest = widths.size();
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (widths[i] > floors[i] && (widest == widths.size() || widths[i] > widths[widest])) widest = i;
    }
    if (widest == widths.size()) break;
    --widths[widest];
  }
  return excess;
}

}  // namespace

std::vector<int> fitColumns(const std::vector<ColumnWish>& wishes, std::size_t rest, int room) {
  std::vector<int> widths, whole, least, bare;
  for (const ColumnWish& wish : wishes) {
    least.push_back(wish.least);
    bare.push_back(std::min(wish.bare, wish.least));
    whole.push_back(std::max(wish.whole, wish.least));
    widths.push_back(std::max(wish.wanted, whole.back()));
  }
  const int excess = std::accumulate(widths.begin(), widths.end(), 0) - room;
  if (excess < 0 && rest < widths.size()) widths[rest] -= excess;
  shrink(widths, shrink(widths, shrink(widths, excess, whole), least), bare);
  return widths;
}

void narrowBroken(std::vector<int>& widths, const std::vector<ColumnWish>& wishes, std::size_t rest) {
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (i == rest || widths[i] >= wishes[i].whole || widths[i] <= wishes[i].least) continue;
    widths[rest] += widths[i] - wishes[i].least;
    widths[i] = wishes[i].least;
  }
}

}  // namespace tavoline
