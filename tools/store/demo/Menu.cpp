#include "tools/store/demo/Menu.h"

#include <algorithm>
#include <array>

namespace tavoline::tool {
namespace {

constexpr std::array kLines = {4, 11, 19, 23, 20, 14, 9};  // Orders of one line, of two, ...
constexpr std::array kQuantities = {68, 24, 8};

// Per category, in the order of demoCategories().
using Appetite = std::array<int, 10>;
constexpr Appetite kMorning = {30, 4, 6, 28, 22, 2, 0, 0, 0, 2};
constexpr Appetite kNoon = {8, 16, 6, 1, 0, 20, 14, 20, 8, 7};
constexpr Appetite kAfternoon = {26, 10, 16, 14, 0, 4, 0, 0, 0, 24};
constexpr Appetite kEvening = {8, 15, 7, 0, 0, 20, 18, 14, 8, 10};

// Half hours from 7:00 on.
constexpr int kOpening = 7 * 60;
constexpr std::array kRush = {3, 5, 7, 7, 6, 5, 4, 3, 3, 4, 9, 12, 12, 9, 5, 3,
                              3, 3, 5, 6, 6, 5, 5, 5, 7, 9, 9, 8,  6,  4, 2, 1};

const Appetite& appetite(int hour) {
  if (hour < 11) return kMorning;
  if (hour < 15) return kNoon;
  return hour < 18 ? kAfternoon : kEvening;
}

}  // namespace

Menu::Menu() : byCategory_(demoCategories().size()) {
  const auto articles = demoArticles();
  for (std::size_t i = 0; i < articles.size(); ++i)
    byCategory_[static_cast<std::size_t>(articles[i].category - 1)].push_back(i);
}

std::size_t Menu::pick(Random& random, int hour) const {
  return random.of(byCategory_[random.weighted(appetite(hour))]);
}

const std::vector<OrderLine>& Menu::order(Random& random, int hour) {
  lines_.clear();
  for (std::size_t wanted = random.weighted(kLines) + 1; wanted > 0; --wanted) {
    const std::size_t article = pick(random, hour);
    const int quantity = static_cast<int>(random.weighted(kQuantities)) + 1;
    const auto same =
        std::find_if(lines_.begin(), lines_.end(), [&](const OrderLine& l) { return l.article == article; });
    if (same == lines_.end())
      lines_.push_back({article, quantity});
    else
      same->quantity += quantity;
  }
  return lines_;
}

int minuteOfRush(Random& random) {
  return kOpening + 30 * static_cast<int>(random.weighted(kRush)) + random.below(30);
}

}  // namespace tavoline::tool
