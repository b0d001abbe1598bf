#include "cash/liste_caiseU.h"

#include "cash/Amount.h"
#include "cash/CaiseU.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

Tliste_caiseF* liste_caiseF = nullptr;

namespace {

constexpr const char* kEverything = "<Afichier Tout...............>";

void takeStatement(Dataset& rows, Label& caption) {
  rows.Close();
  rows.CommandText("");
  rows.CommandText(caption.Caption());
}

}  // namespace

Tliste_caiseF::Tliste_caiseF()
    : TForm("liste_caiseF"), frxReport1(std::make_unique<Report>("Tliste_caiseF", "frxReport1", this)) {
  setupUi(this);
  X1->OnClick = [this] { X1Click(); };
  RzComboBox2->OnChange = [this] { RzComboBox2Change(); };
  AdvSmoothButton1->OnClick = [this] { AdvSmoothButton1Click(); };
  RzShapeButton4->OnClick = [this] { RzShapeButton4Click(); };
  dates_.Wire(*this);
  RzDateTimeEdit1->OnEnter = RzDateTimeEdit2->OnEnter = [this] { RzShapeButton2->Click(); };
  RzShapeButton2->OnClick = [this] { AdvSmoothButton4Click(); };
  RzLabel10->OnClick = [this] { RzLabel10Click(); };
  connect(cancel1, &QAction::triggered, this, [this] { guarded([this] { cancel1Click(); }); });
  AdvSmoothButton3->OnClick = [this] { AdvSmoothButton3Click(); };
  AdvSmoothButton2->OnClick = [this] { AdvSmoothButton2Click(); };
  navigates(DM->Caise, AdvSmoothButton8, AdvSmoothButton7, AdvSmoothButton5, AdvSmoothButton6);
  Ready();
}

Tliste_caiseF::~Tliste_caiseF() = default;

void Tliste_caiseF::FormShow() {
  X1Click();
}

// The list offers the ordinary desks; what is chosen at first is the first desk of all, of whatever kind.
void Tliste_caiseF::X1Click() {
  DM->Caisse.FilterBy("general=" + inQuotes(Label3->Caption()));
  QStringList desks;
  for (DM->Caisse.First(); !DM->Caisse.Eof(); DM->Caisse.Next())
    desks << QString::fromStdString(DM->Caisse["id_caise"].text());
  RzComboBox2->setItems(desks);
  DM->Caisse.Refresh();
  DM->Caisse.Filtered(false);
  DM->Caisse.First();
  RzComboBox2->Text(DM->Caisse["id_caise"].text());
  Label4->Caption(DM->Caisse["nom_caisse"].text());
}

// Without its filter the table of desks stands on its first row again, whichever desk was chosen.
void Tliste_caiseF::RzComboBox2Change() {
  if (RzComboBox2->Text() == kEverything) return Label4->Caption("Tout les Caisses");
  DM->Caisse.FilterBy("id_caise=" + inQuotes(RzComboBox2->Text()));
  Label4->Caption(DM->Caisse["nom_caisse"].text());
  DM->Caisse.Filtered(false);
}

// --- A closing begins

void Tliste_caiseF::AdvSmoothButton1Click() {
  if (backToOpenClosing()) return;
  beginEntry();
  DM->last.Reopen();
  caiseF->X1->Click();
  takeNewStatements();
  if (DBText4->Caption().empty()) {
    ShowMessage("il n'y a pas des commendes disponibles pour encaissement");
    MenuF->RzGroupBar2->setEnabled(true);
    return;
  }
  caiseF->Label5->Caption(RzComboBox2->Text());
  const bool allDesks = coversAllDesks();
  caiseF->ShowFor(allDesks);
  DM->Table_.FilterBy("etat='ON'");
  openPeriod(allDesks);
  showClosing();
  caiseF->Label9->Caption("insert");
  insertClosing(allDesks);
  (allDesks ? caiseF->RzBitBtn3 : caiseF->RzBitBtn5)->Click();
  if (!allDesks) writeStartingAmounts();
  if (!DM->Table_.Eof())
    ShowMessage(allDesks ? "pour info il y a des commandes en cours "
                         : "pour info ila des commandes en cours ");
  DM->Table_.Filtered(false);
}

// There is one closing at a time. One that is open comes to the front; one whose screen was closed from
// outside is given up, so that no half of it gets into the store.
bool Tliste_caiseF::backToOpenClosing() {
  if (caiseF->Label9->Caption() != "insert") return false;
  if (caiseF->Visible()) {
    beginEntry();
    showClosing();
    return true;
  }
  if (DM->Caise.State() == DatasetState::Insert) DM->Caise.Cancel();
  return false;
}

// What stands beside the list decides, and not the list: a text that names no desk means all of them.
bool Tliste_caiseF::coversAllDesks() {
  return Label4->Caption().empty() || Label4->Caption() == "Tout les Caisses";
}

void Tliste_caiseF::takeNewStatements() {
  const std::pair<Dataset*, Label*> statements[] = {
      {&DM->Calcul_dep, Label29}, {&DM->sum_x, Label22}, {&DM->xxx1, Label19},   {&DM->xx1, Label18},
      {&DM->null4, Label17},      {&DM->x1, Label20},    {&DM->x2, Label21},     {&DM->sum_x2, Label28},
      {&DM->xxx3, Label25},       {&DM->xx2, Label24},   {&DM->Null44, Label23}, {&DM->x22, Label26},
      {&DM->x33, Label27}};
  const Store::OneVersion same(DM->store());
  for (const auto& [rows, caption] : statements) {
    takeStatement(*rows, *caption);
    rows->Open();
  }
}

void Tliste_caiseF::openPeriod(bool allDesks) {
  DM->Reopen({&DM->CS, &DM->min, &DM->last, &DM->lastt});
  if (allDesks) return;
  DM->lastt.Active(false);
  DM->lastt.ParamByName("c") = RzComboBox2->Text();
  DM->lastt.Active(true);
}

void Tliste_caiseF::showClosing() {
  caiseF->Dock(MenuF->RzPanel4);
  caiseF->Show();
}

// The first closing of all begins with the oldest order. Every other one begins with the first order that is
// open, whichever desk took it: `lastt` always has its one row, so that the desk's own last closing never
// decides.
void Tliste_caiseF::insertClosing(bool allDesks) {
  const bool first = DBText2->Caption() == "0";
  Dataset& rows = DM->Caise;
  rows.Insert();
  rows["date_lancement"] = Clock::now();
  rows["login"] = DBText3->Caption();
  rows["n_caise"] = first ? Value(1) : DM->CS["CS"] + Value(1);
  if (first)
    rows["date_debut"] = DM->min["MinOfdate_commande"];
  else if (allDesks || !DM->lastt.Eof())
    rows["date_debut"] = DM->last["LastOfdate_fin"];
  else
    rows["date_debut"] = DM->lastt["LastOfdate_fin"];
  rows["date_fin"] = Clock::now();
  rows["id_caisse"] = !allDesks ? RzComboBox2->Text() : first ? "Tous Caisses" : "Tous Ciasses";
  caiseF->Begins();
}

// The desk's book balance is taken for the count, and nothing is taken out of it. The difference comes first,
// and the float after both amounts: until it has a text nothing is computed and no message appears.
void Tliste_caiseF::writeStartingAmounts() {
  const std::string spent = DBText6->Caption();
  const Value sales = DM->sum_x2["SumOftcc"];
  if (!spent.empty() && Value(readFloat(spent)) > sales)
    ShowMessage("Votre dépenses est supérieur au recettes, peut etre pris de fond de caisse");
  caiseF->DBEdit4->Text("0");
  if (spent.empty()) caiseF->DBText6->Caption("0");
  caiseF->DBEdit3->Text("0");
  caiseF->DBEdit1->Text(DM->Caisse["solde"].text());
  caiseF->DBEdit2->Text(difference(caiseF->DBEdit1->Text(), caiseF->DBEdit3->Text()));
  caiseF->DBEdit4->Text(difference(DM->Caisse["solde"].text(), caiseF->DBEdit1->Text()));
}

// --- A closing is viewed

void Tliste_caiseF::RzShapeButton4Click() {
  if (backToOpenClosing()) return;
  DM->Reopen({&DM->CS, &DM->min, &DM->last, &DM->lastt});
  beginEntry();
  showClosing();
  const bool allDesks = DBText5->Caption() == "Tous Caisses";
  caiseF->ShowFor(allDesks);
  if (!allDesks) caiseF->Label5->Caption(DBText5->Caption());
  takeViewStatements(allDesks);
  (allDesks ? caiseF->RzBitBtn3 : caiseF->RzBitBtn5)->Click();
  if (allDesks) caiseF->Label5->Caption(kEverything);
  caiseF->RzBitBtn4->setVisible(false);
  caiseF->RzBitBtn7->setVisible(false);
}

void Tliste_caiseF::takeViewStatements(bool allDesks) {
  const std::vector<std::pair<Dataset*, Label*>> ofAllDesks = {
      {&DM->sum_x, Label5}, {&DM->Calcul_dep, Label29}, {&DM->xxx1, Label6}, {&DM->xx1, Label7},
      {&DM->null4, Label8}, {&DM->x1, Label9},          {&DM->x2, Label10}};
  const std::vector<std::pair<Dataset*, Label*>> ofOneDesk = {{&DM->sum_x2, Label11}, {&DM->xxx3, Label14},
                                                              {&DM->xx2, Label13},    {&DM->Null44, Label12},
                                                              {&DM->x22, Label15},    {&DM->x33, Label16}};
  const Store::OneVersion same(DM->store());
  for (const auto& [rows, caption] : allDesks ? ofAllDesks : ofOneDesk) {
    takeStatement(*rows, *caption);
    if (rows != &DM->x1 && rows != &DM->x22) {
      rows->ParamByName("x") = DM->Caise["date_debut"];
      rows->ParamByName("y") = DM->Caise["date_fin"];
    }
    rows->Open();
  }
}

// --- The list

void Tliste_caiseF::AdvSmoothButton4Click() {
  if (dates_.BothGiven()) DM->Caise.FilterBy(dates_.Pieces());
}

void Tliste_caiseF::RzLabel10Click() {
  DM->Caise.Filtered(false);
  dates_.Clear();
}

// The filter of the expenses goes, and that of the closings stays.
void Tliste_caiseF::cancel1Click() {
  DM->Depence.Filtered(false);
  dates_.Clear();
}

void Tliste_caiseF::AdvSmoothButton3Click() {
  frxReport1->ShowReport(true);
}

void Tliste_caiseF::AdvSmoothButton2Click() {
  Close();
  DM->Caise.Cancel();
}

}  // namespace tavoline
