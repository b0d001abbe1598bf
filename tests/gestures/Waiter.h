#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "data/DMU.h"

namespace tavoline::test {

/// What a waiter may tap in a store.
struct Menu {
  std::vector<std::string> tables;
  std::vector<std::string> articles;  ///< Designations of articles that are kept in stock ("OUI").
  std::string desk;                   ///< An ordinary desk.
  std::string login;

  /// Reads them through the datasets of `dm`, whose current rows move.
  static Menu of(TDM& dm);
};

/// Plays orders on the data module as the screens do, without the screens: every refresh, filter, reopening,
/// read and write of their handlers, in their order, and the reads of the captions and grid rows that they
/// show.
class Waiter {
 public:
  Waiter(TDM& dm, const Menu& menu) : dm_(dm), menu_(menu) {}

  void logIn();  ///< The reads of a login's last character.
  /// Takes a table: a free one with a row in `commande`, one with an order by that order. False, and nothing
  /// taken, if somebody holds it.
  bool takeTable(const std::string& table);
  /// Adds one to the article's line of the order, or begins it. False, and nothing written, if it is out of
  /// stock.
  bool tap(const std::string& designation);
  void removeLine();  ///< "Supp" of the first line; nothing without one.
  void save();        ///< "Enregistrer": the order waits on its table. Needs a line.
  void leave();       ///< "Fermer" of an order without lines, which goes.
  void closeTable();  ///< "Cloturer la Table", the ticket and the way back to the map. Needs a line.
  bool hasLines() { return !dm_.relation_commande1.Eof(); }

  /// Whole orders of eight lines, the first of them tapped twice, over the tables in turn.
  void serve(int orders);

  /// Characters read to be shown: keeps the reads from being dropped.
  std::size_t shown() const { return shown_; }

 private:
  void beginOrder();
  void reopenOrder();
  void backToMap();
  void showMap();
  void showTiles();
  void showOrder();
  void showArticle();
  void show(const Value& value) { shown_ += value.text().size(); }
  void dateOrder();
  static void filterOrder(const std::string& order, std::initializer_list<Dataset*> all);
  void stock(const Value& now);
  void filterTable();
  void writeTable(std::initializer_list<std::pair<const char*, Value>> fields);

  TDM& dm_;
  const Menu& menu_;
  std::string table_, order_;
  std::size_t shown_ = 0;
  std::size_t turn_ = 0;
};

}  // namespace tavoline::test
