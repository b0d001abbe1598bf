#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "data/value/Value.h"
#include "sales/Room.h"
#include "toolkit/forms/TForm.h"
#include "ui_commandeU.h"

namespace tavoline {

/// The table map: the places at the left, one tile per table of the chosen place. A tile takes its table and
/// hands over to the order entry. Other screens redraw the map by pressing RzButton1.
class TcommandeF : public TForm, public Ui::commandeF {
  Q_OBJECT

 public:
  TcommandeF();

  void RzButton1Click();
  void MaProcedure(const ShapeButton& Sender);
  void DBLookupListBox1Click();
  void FermerClick();

 protected:
  void FormShow() override;
  void FormClose() override;
  void showEvent(QShowEvent* event) override;

 private:
  void addTile(int counter);
  void count();
  std::string countsOf(const Value& place) const;
  void tellRoom();
  void readSaleAfresh();
  void reopenOrder(const std::string& name);
  void startOrder(const std::string& name);
  void insertOrder(const std::string& name);
  void dockOrderEntry();
  void lockTable(const std::string& name);

  struct Table {
    ShapeButton* tile;
    Value order;  // its number
    bool held;
  };
  std::vector<Table> tables_;                          // that the map shows
  std::map<std::string, std::pair<int, int>> counts_;  // free and busy ones, by place
  Room room_;
  bool told_ = true;  // whether the tiles tell of their orders

  std::string begun_;  // the table whose order was inserted and whose further steps the store refused
  Value begunOrder_;   // its number
};

extern TcommandeF* commandeF;

}  // namespace tavoline
