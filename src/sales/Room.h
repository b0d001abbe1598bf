#pragma once

#include <QtCore/QStringList>
#include <map>
#include <string>

#include "data/dataset/ReadRows.h"

namespace tavoline {

/// What the map tells of the orders that are open: their totals, how long they run and who serves them. Read
/// for all tables by one statement, whose cost is that of the open orders.
class Room {
 public:
  /// As it is in the store now. Forgets all where the store does not answer: the datasets of the map read it
  /// next, and say what ails it.
  void read(Store& store);
  /// The lines beneath a table's name: the total in DA, the time since the order began, its waiter. Empty for
  /// a number that no table bears.
  QStringList of(const Value& order) const;

 private:
  struct Order {
    Value total;
    Value since;  // a date-time, or null
    std::string login;
  };
  void readOrders(Store& store);
  void readNames(Store& store);

  std::map<std::int64_t, Order> orders_;
  std::map<std::string, QString> names_;  // of the waiters, by login
};

/// "12 min", "1 h 05", "2 j": how long something runs at `now`. Empty before it began.
QString duration(const DateTime& since, const DateTime& now);

}  // namespace tavoline
