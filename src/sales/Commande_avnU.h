#pragma once

#include <memory>
#include <string>

#include "data/value/Value.h"
#include "sales/ArticleSearch.h"
#include "sales/OrderNews.h"
#include "sales/Unfinished.h"
#include "toolkit/forms/TForm.h"
#include "ui_Commande_avnU.h"

namespace tavoline {

class Report;

/// The order entry: one order on one table. Its hidden captions (DBText*, Label4 to Label8) carry values
/// between its steps and to the dialogs; an empty one means that the dataset has no current row.
class TCommande_avnF : public TForm, public Ui::Commande_avnF {
  Q_OBJECT

 public:
  TCommande_avnF();
  ~TCommande_avnF() override;

  void RzBitBtn1Click();
  void DBLookupListBox1Click();
  void ArticleClick(const std::string& senderCaption);
  void RzDBGrid1CellClick();
  void SuppClick();
  void QteClick();
  void ObsClick();
  void RemisseClick();
  void ImprimerClick();
  void EnregistrerClick();
  void FermerClick();
  void CloturerClick();

  std::unique_ptr<Report> frxReport1;  ///< The customer ticket.
  std::unique_ptr<Report> frxReport2;  ///< The table ticket.

 protected:
  void FormShow() override;
  void showEvent(QShowEvent* event) override;

 private:
  void wireSearch();
  void wireKeys();
  void comeForward(const ArticleSearch::Article* sought);
  void addTile(int counter);
  std::string ofTheOrder();
  void freeTable();
  void filterTickets();

  void tapWithoutStock();
  void tapFromStock();
  bool lineExists();
  void updateLine();
  void insertLine();
  void postLine();
  void reopenLines();
  void markTable();

  void finishTap();
  void takeFromStock(const Value& taken);
  void markTapped();

  void finishOrder();
  void writeTotal();
  void creditDesk();

  Unfinished unfinished_;
  OrderNews* news_ = nullptr;        // of the screen's own line
  ArticleSearch* search_ = nullptr;  // of its own input
};

extern TCommande_avnF* Commande_avnF;

}  // namespace tavoline
