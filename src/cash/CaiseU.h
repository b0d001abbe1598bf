#pragma once

#include <memory>
#include <optional>
#include <string>

#include "data/value/Value.h"
#include "toolkit/forms/TForm.h"
#include "ui_CaiseU.h"

namespace tavoline {

class Dataset;
class Report;

/// The closing of a period: what was sold and spent, what is counted, taken out and left; saving writes it
/// all. Begun and filled by the journal, which also shows one that was saved, with both save buttons hidden.
///
/// Label9 is "insert" while a new closing is on the screen; Label5 holds the chosen desk. The book balance of
/// the computations is that of the row on which the table of desks stands (DBText7), whichever desk was
/// chosen. What the controls show is what is computed with, so no control here rounds.
class TcaiseF : public TForm, public Ui::caiseF {
  Q_OBJECT

 public:
  TcaiseF();
  ~TcaiseF() override;

  void ShowFor(bool allDesks);  ///< Brings the controls of one mode to view and hides those of the other.
  void Begins();  ///< The row on which the closings stand is the new one that the save will be about.

  void RzBitBtn1Click();
  void RzBitBtn3Click();
  void AdvSmoothButton1Click();
  void AdvSmoothButton2Click();
  void AdvSmoothButton3Click();
  void RzRapidFireButton4Click();  ///< The report by user over all desks: complete, and bound to no control.

  std::unique_ptr<Report> frxReport1, frxReport3;  ///< All desks: by article, by category.
  std::unique_ptr<Report> frxReport2, frxReport5;  ///< One desk: by article, by category.
  std::unique_ptr<Report> frxReport4, frxReport6;  ///< By user: all desks, one desk.
  std::unique_ptr<Report> frxReport7;              ///< The closing sheet.

 protected:
  void FormShow() override;
  void FormClose() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void DBEdit1Change();
  void DBEdit3Change();
  void DBEdit4Change();
  bool anAmountIsMissing();
  std::string bookBalance();

  void RzRapidFireButton1Click();
  void RzRapidFireButton2Click();
  void RzRapidFireButton3Click();
  void RzRapidFireButton5Click();
  void RzRapidFireButton7Click();
  void RzRapidFireButton8Click();
  void hideReason();
  void openForPeriod(Dataset& rows, bool byUser = false, bool byDesk = false);
  void openHeaders(Dataset& headers);
  bool userIsMissing();
  void chooseUser();
  void clearUser();

  void RzBitBtn7Click();
  bool amountsAreTyped();
  bool closingIsStillHere();
  void postClosing();
  void markOrders();
  void moveBalances();
  void writeBalance(const Value& amount);
  void writeLoss();
  void dropRefused();
  void printSheet();

  void RzBitBtn4Click();
  void postAllDesks();
  void finishAllDesks();

  void AdvSmoothButton5Click();
  void AdvSmoothButton4Click();

  Value begunAt_, begunNumber_;
  // Of a save that is refused half way, and that is begun again.
  std::optional<std::string> book_;       // the book balance: the table of desks stands elsewhere by then
  std::optional<Value> left_, credited_;  // what the desk and the house desk have got of it
  bool balanceWaits_ = false, lossWaits_ = false, lossWritten_ = false;
};

extern TcaiseF* caiseF;

}  // namespace tavoline
