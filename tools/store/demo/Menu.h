#pragma once

#include <string_view>
#include <vector>

#include "tools/store/demo/Cafeteria.h"
#include "tools/store/demo/Random.h"

namespace tavoline::tool {

struct OrderLine {
  std::size_t article;  ///< Index into demoArticles().
  int quantity;
  int total() const { return quantity * demoArticles()[article].price; }
};

/// What guests ask for: coffee and croissants in the morning, plates at noon, pastry in the afternoon.
class Menu {
 public:
  Menu();
  /// The lines of one order, one to seven, no article twice. `hour` is 0 to 23.
  const std::vector<OrderLine>& order(Random& random, int hour);

 private:
  std::size_t pick(Random& random, int hour) const;
  std::vector<std::vector<std::size_t>> byCategory_;
  std::vector<OrderLine> lines_;
};

/// Minute of the day at which an order ends, with the rush of breakfast, noon and evening; 420 (7:00) to 1379
/// (22:59).
int minuteOfRush(Random& random);

}  // namespace tavoline::tool
