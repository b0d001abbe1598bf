#include "cash/CaiseU.h"

#include <QtCore/QEvent>
#include <QtGui/QRegularExpressionValidator>
#include <utility>

#include "cash/Amount.h"
#include "cash/comptageU.h"
#include "data/DMU.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

TcaiseF* caiseF = nullptr;

TcaiseF::TcaiseF()
    : TForm("caiseF"),
      frxReport1(std::make_unique<Report>("TcaiseF", "frxReport1", this)),
      frxReport3(std::make_unique<Report>("TcaiseF", "frxReport3", this)),
      frxReport2(std::make_unique<Report>("TcaiseF", "frxReport2", this)),
      frxReport5(std::make_unique<Report>("TcaiseF", "frxReport5", this)),
      frxReport4(std::make_unique<Report>("TcaiseF", "frxReport4", this)),
      frxReport6(std::make_unique<Report>("TcaiseF", "frxReport6", this)),
      frxReport7(std::make_unique<Report>("TcaiseF", "frxReport7", this)) {
  setupUi(this);
  DBEdit1->OnChange = [this] { DBEdit1Change(); };
  DBEdit3->OnChange = [this] { DBEdit3Change(); };
  auto* digits = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[-+0-9,.Ee]*")), this);
  for (DBEdit* amount : {DBEdit1, DBEdit3}) amount->setValidator(digits);
  // Also where another row comes to view: the word belongs to the figure beside it, and writes nothing.
  connect(DBEdit4, &QLineEdit::textChanged, this, [this] { guarded([this] { DBEdit4Change(); }); });
  RzBitBtn1->OnClick = [this] { RzBitBtn1Click(); };
  RzBitBtn3->OnClick = [this] { RzBitBtn3Click(); };
  RzBitBtn33->OnClick = [this] { AdvSmoothButton1Click(); };
  RzBitBtn5->OnClick = [this] { AdvSmoothButton2Click(); };
  RzRapidFireButton9->OnClick = [this] { AdvSmoothButton3Click(); };
  DBLookupComboboxEh1->OnChange = [this] { chooseUser(); };
  DBLookupComboboxEh1->installEventFilter(this);
  RzRapidFireButton6->OnClick = [this] { clearUser(); };
  RzBitBtn7->OnClick = [this] { RzBitBtn7Click(); };
  RzBitBtn4->OnClick = [this] { RzBitBtn4Click(); };
  RzBitBtn2->OnClick = [this] { AdvSmoothButton5Click(); };
  AdvSmoothButton4->OnClick = [this] { AdvSmoothButton4Click(); };
  ShowFor(false);
  Ready();
}

TcaiseF::~TcaiseF() = default;

// No control shows the rows of the summaries.
void TcaiseF::FormShow() {
  for (Dataset* rows : {&DM->xx1, &DM->xxx1, &DM->x1, &DM->x2, &DM->null4, &DM->xx2, &DM->x22, &DM->Null44,
                        &DM->xxx3, &DM->x33})
    rows->DisableControls();
}

// A count that stayed open would go on to write into whichever closing the journal stands on. A save that was
// refused half way has left the desks filtered to the one that it was about.
void TcaiseF::FormClose() {
  comptageF->Close();
  dropRefused();
  if (std::exchange(book_, std::nullopt)) DM->Caisse.Filtered(false);
}

void TcaiseF::ShowFor(bool allDesks) {
  for (QWidget* control : {static_cast<QWidget*>(RzRapidFireButton9), static_cast<QWidget*>(RzBitBtn5),
                           static_cast<QWidget*>(RzBitBtn33), RzPanel7, static_cast<QWidget*>(RzBitBtn7)})
    control->setVisible(!allDesks);
  for (QWidget* control : {static_cast<QWidget*>(RzBitBtn3), static_cast<QWidget*>(RzBitBtn1), RzPanel5,
                           static_cast<QWidget*>(RzBitBtn4)})
    control->setVisible(allDesks);
}

// --- Amounts

bool TcaiseF::anAmountIsMissing() {
  return DBEdit3->Text().empty() || DBEdit2->Text().empty() || DBEdit1->Text().empty();
}

std::string TcaiseF::bookBalance() {
  return book_ ? *book_ : DBText7->Caption();
}

// Another count wipes what was to be taken out.
void TcaiseF::DBEdit1Change() {
  if (anAmountIsMissing()) return;
  DBEdit3->Text("0");
  DBEdit4->Text(difference(DBEdit1->Text(), bookBalance()));
  DBEdit2->Text(difference(DBEdit1->Text(), DBEdit3->Text()));
}

// Where too much is taken out the float stays below zero until another amount is typed.
void TcaiseF::DBEdit3Change() {
  if (anAmountIsMissing()) return;
  DBEdit2->Text(difference(DBEdit1->Text(), DBEdit3->Text()));
  if (Label9->Caption() == "insert" && readFloat(DBEdit3->Text()) > readFloat(DBEdit1->Text())) {
    ShowMessage("Vous ne pouvez pas prendre plus que le montant en caissé ! ");
    DBEdit3->Clear();
  }
}

void TcaiseF::DBEdit4Change() {
  const std::string shown = DBEdit4->text().toStdString();
  if (shown.empty()) return;
  const double missing = readFloat(shown);
  Label18->Caption(missing < 0 ? "Négatif" : missing > 0 ? "Positif" : "");
}

// --- The sales of the period

void TcaiseF::hideReason() {
  Label13->setVisible(false);
  RzDBMemo1->setVisible(false);
}

// The bounds as the captions show them, to the second; the later one is given first.
void TcaiseF::openForPeriod(Dataset& rows, bool byUser, bool byDesk) {
  rows.Active(false);
  rows.ParamByName("x") = readDateTime(DBText3->Caption());
  rows.ParamByName("y") = readDateTime(DBText1->Caption());
  if (byUser) rows.ParamByName("z") = DBLookupComboboxEh1->KeyValue();
  if (byDesk) rows.ParamByName("c") = Label5->Caption();
  rows.Active(true);
}

void TcaiseF::RzRapidFireButton1Click() {
  hideReason();
  openForPeriod(DM->null4);
  openForPeriod(DM->sum_x);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::RzRapidFireButton2Click() {
  hideReason();
  openForPeriod(DM->xx1);
  openForPeriod(DM->sum_x);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::RzRapidFireButton3Click() {
  hideReason();
  openForPeriod(DM->xxx1, true);
  openForPeriod(DM->x2, true);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::RzRapidFireButton5Click() {
  hideReason();
  openForPeriod(DM->xxx3, true, true);
  openForPeriod(DM->x33, true, true);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::RzRapidFireButton7Click() {
  hideReason();
  openForPeriod(DM->Null44, false, true);
  openForPeriod(DM->sum_x2, false, true);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::RzRapidFireButton8Click() {
  hideReason();
  openForPeriod(DM->xx2, false, true);
  openForPeriod(DM->sum_x2, false, true);
  openForPeriod(DM->Calcul_dep);
}

void TcaiseF::openHeaders(Dataset& headers) {
  headers.Open();
  headers.FilterBy("date_commande>=" + inBareQuotes(DBText1->Caption()) +
                   "and date_commande<=" + inBareQuotes(DBText3->Caption()));
}

void TcaiseF::RzBitBtn1Click() {
  DM->x1.Close();
  openHeaders(DM->x1);
  RzRapidFireButton1Click();
  frxReport3->ShowReport(true);
}

void TcaiseF::RzBitBtn3Click() {
  DM->x1.Close();
  openHeaders(DM->x1);
  RzRapidFireButton2Click();
  frxReport1->ShowReport(true);
}

void TcaiseF::AdvSmoothButton1Click() {
  DM->x22.Close();
  DM->x22.ParamByName("c") = Label5->Caption();
  openHeaders(DM->x22);
  RzRapidFireButton7Click();
  frxReport5->ShowReport(true);
}

void TcaiseF::AdvSmoothButton2Click() {
  DM->x22.Close();
  DM->x22.ParamByName("c") = Label5->Caption();
  openHeaders(DM->x22);
  RzRapidFireButton8Click();
  frxReport2->ShowReport(true);
}

bool TcaiseF::userIsMissing() {
  if (!DBLookupComboboxEh1->Text().empty()) return false;
  ShowMessage("selectionner utiliseur !");
  DBLookupComboboxEh1->SetFocus();
  return true;
}

void TcaiseF::AdvSmoothButton3Click() {
  if (userIsMissing()) return;
  DM->x22.Filtered(false);
  DM->x22.Reopen();
  RzRapidFireButton5Click();
  frxReport6->ShowReport(true);
}

void TcaiseF::RzRapidFireButton4Click() {
  if (userIsMissing()) return;
  DM->x1.Filtered(false);
  DM->x1.Reopen();
  RzRapidFireButton3Click();
  frxReport4->ShowReport(true);
}

void TcaiseF::chooseUser() {
  hideReason();
  Label6->Caption(DM->utilisateur["nom"].text());
}

void TcaiseF::clearUser() {
  DBLookupComboboxEh1->KeyValue(Value());
  Label6->Caption("Utilisateur");
}

bool TcaiseF::eventFilter(QObject* watched, QEvent* event) {
  if (watched == DBLookupComboboxEh1 && event->type() == QEvent::MouseButtonPress) hideReason();
  return TForm::eventFilter(watched, event);
}

// --- The way out

void TcaiseF::AdvSmoothButton5Click() {
  hideReason();
  Label9->Caption("");
  Close();
  DM->Caise.Cancel();
  MenuF->RzGroupBar2->setEnabled(true);
}

// The first write fills every box that is empty, the third one too, which is not named here.
void TcaiseF::AdvSmoothButton4Click() {
  comptageF->Show();
  for (Edit* box :
       {comptageF->Edit1, comptageF->Edit2, comptageF->Edit4, comptageF->Edit5, comptageF->Edit6,
        comptageF->Edit7, comptageF->Edit8, comptageF->Edit9, comptageF->Edit10, comptageF->Edit11}) {
    if (box->Text().empty()) box->Text("0");
  }
}

}  // namespace tavoline
