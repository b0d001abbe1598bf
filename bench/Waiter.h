#pragma once

#include <cstddef>
#include <string>

#include "bench/Scene.h"
#include "data/DMU.h"

namespace tavoline::bench {

/// Plays orders on the data module as the screens do, without the screens: every refresh, filter, reopening,
/// read and write of their handlers, in their order, and the reads of the captions and grid rows that they
/// show.
class Waiter {
 public:
  Waiter(TDM& dm, const Menu& menu) : dm_(dm), menu_(menu) {}

  void logIn();                              ///< The reads of a login's last character.
  void takeTable(const std::string& table);  ///< A free table: a row in `commande`, the lock.
  /// The first tap of an article in the order, or a further one.
  void tap(const std::string& designation);
  void closeTable();  ///< "Cloturer la Table" up to the change.

  /// Whole orders of eight lines, each line tapped once and the first one twice, over the tables in turn.
  void serve(int orders);

  std::size_t shown() const {
    return shown_;
  }  ///< Characters read to be shown: keeps the reads from being dropped.

 private:
  void showMap();
  void showTiles();
  void showOrder();
  void showArticle();
  void show(const Value& value) { shown_ += value.text().size(); }
  void filterTable();
  void line(int quantity);

  TDM& dm_;
  const Menu& menu_;
  std::string table_, order_;
  std::size_t shown_ = 0;
  std::size_t turn_ = 0;
};

}  // namespace tavoline::bench
