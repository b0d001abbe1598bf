#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/value/DateTime.h"
#include "tools/store/Filler.h"
#include "tools/store/demo/Menu.h"
#include "tools/store/demo/Random.h"

namespace tavoline::tool {

inline constexpr std::int64_t kMinute = 60'000;  ///< In milliseconds.

struct HistoryPlan {
  DateTime firstDay;
  int days = 0;
  std::int64_t orders = 0;    ///< Exactly; spread over the days, fewer on Fridays.
  std::int64_t invoices = 0;  ///< Of purchases, exactly; spread over the days.
  int daysNotClosed = 0;      ///< The last days, whose orders wait for a closing.
  std::uint64_t seed = 1;
};

/// Lives the days of a cafeteria one after the other, as its staff would: orders, expenses, deliveries, and
/// in the evening the closing of each desk that sold. Money moves by the rules of the screens, so that every
/// balance, total and closing adds up.
class History {
 public:
  /// Writes into the tables of `filler`, which holds none of their indexes yet.
  History(Filler& filler, const HistoryPlan& plan);

  void write();

  std::int64_t orders() const { return order_; }
  std::int64_t lines() const { return lines_; }
  double balance(std::size_t desk) const { return desks_[desk].balance; }  ///< Index into demoDesks().

 private:
  struct Desk {
    std::string code;
    bool house = false;
    double balance = 0;
    double receipts = 0;                 ///< Of the finished orders that no closing covers.
    std::optional<DateTime> firstOrder;  ///< Of the same orders.
  };
  struct Expense {
    DateTime date;
    double amount;
  };
  struct ExpenseRow;

  void liveDay(DateTime day, std::int64_t orders, std::int64_t invoices, bool closed);
  void writeOrder(DateTime date, bool closed);
  void spend(DateTime day, std::int64_t index);
  void writeExpense(const ExpenseRow& row, Desk& desk);
  void receiveDelivery(DateTime day);
  struct Payment;
  Payment pay(double total);
  void closeDesk(Desk& desk, DateTime now);

  HistoryPlan plan_;
  Random random_, purchases_;  ///< Apart, so that deliveries change no order.
  Menu menu_;
  std::vector<DemoTable> tables_;
  std::array<Desk, 3> desks_;          ///< As demoDesks(): the hall's, the terrace's, the house desk.
  std::vector<Expense> openExpenses_;  ///< Of ordinary desks, since the last evening.

  std::int64_t order_ = 0, lines_ = 0, expense_ = 0, invoice_ = 0, closing_ = 0;
  Inserter insertOrder_, insertLine_, insertExpense_, insertInvoice_, insertPurchase_, insertClosing_;
};

}  // namespace tavoline::tool
