#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <map>
#include <string>
#include <vector>

#include "data/value/Value.h"
#include "toolkit/controls/Binding.h"
#include "toolkit/controls/Label.h"
#include "toolkit/controls/Tiles.h"

namespace tavoline {

/// What the order entry tells beside its rows: on each tile how much of its article is ordered and what is
/// left of its stock, and below the total the tax and the discount as the closing will have them. It follows
/// the datasets, once in a turn of the event loop and behind the gesture, and reads rows that the screen
/// shows anyway; what the store refuses, the controls that show these rows tell.
class OrderNews : public QObject {
 public:
  explicit OrderNews(Label* totals);  ///< `totals` gets the line below the total, and is its parent.

  void forgetTiles();
  /// `tile` stands for the current row of Article.
  void addTile(ShapeButton* tile);
  /// Tells anew when the event loop comes round.
  void schedule();
  /// Puts the frame of what Return would press around the tile of an article; empty for none.
  void Choose(const std::string& code);

 private:
  struct Tile {
    QPointer<ShapeButton> tile;
    bool kept = false;  // whether its stock is
    Value stock;
  };
  void listen();
  void tell();
  void tellTiles();
  void readStock();
  std::string totals();

  Label* totals_;
  std::map<std::string, Tile> tiles_;  // by article code
  std::string chosen_;
  Value discount_;  // percent
  bool scheduled_ = false;
  RowsListener lines_, articles_, sums_, orders_;
};

}  // namespace tavoline
