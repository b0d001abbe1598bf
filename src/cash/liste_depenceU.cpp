#include "cash/liste_depenceU.h"

#include <QtGui/QAction>

#include "cash/C_depenceU.h"
#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {

Tliste_depenceF* liste_depenceF = nullptr;

Tliste_depenceF::Tliste_depenceF()
    : TForm("liste_depenceF"), frxReport1(std::make_unique<Report>("Tliste_depenceF", "frxReport1", this)) {
  setupUi(this);
  RzPageControl1->setCornerWidget(RzLabel10);  // a .ui has no word for it
  AdvSmoothButton9->OnClick = [this] { AdvSmoothButton9Click(); };
  AdvSmoothButton4->OnClick = [this] { AdvSmoothButton4Click(); };
  AdvSmoothButton3->OnClick = [this] { AdvSmoothButton3Click(); };
  AdvSmoothButton2->OnClick = [this] { AdvSmoothButton2Click(); };
  quits(DM->Depence, *this, AdvSmoothButton1);
  navigates(DM->Depence, AdvSmoothButton8, AdvSmoothButton7, AdvSmoothButton5, AdvSmoothButton6);
  dates_.Wire(*this);
  RzDateTimeEdit1->OnEnter = RzDateTimeEdit2->OnEnter =
      RzDBLookupComboBox1->OnEnter = [this] { RzShapeButton2->Click(); };
  RzShapeButton2->OnClick = [this] { RzShapeButton2Click(); };
  RzLabel10->OnClick = [this] { RzLabel10Click(); };
  connect(cancel1, &QAction::triggered, this, [this] { guarded([this] { RzLabel10Click(); }); });
  Ready();
}

Tliste_depenceF::~Tliste_depenceF() = default;

void Tliste_depenceF::showEntry() {
  C_depenceF->Dock(MenuF->RzPanel4);
  C_depenceF->Show();
}

// The first desk of the table pays unless another is chosen, whichever the user works at.
void Tliste_depenceF::AdvSmoothButton9Click() {
  DM->last.Reopen();
  if (DBText4->Caption().empty()) {
    ShowMessage("vous devez cloturer au moins une table ");
    MenuF->RzGroupBar2->setEnabled(true);
    return;
  }
  C_depenceF->Label13->Caption("insert");
  DM->D.Reopen();
  showEntry();
  C_depenceF->RzDBComboBox1->SetFocus();
  beginEntry();
  DM->Depence.Insert();
  DM->Depence["id_depence"] = nextNumber(*DBText2);
  DM->Depence["date_depense"] = Clock::now();
  DM->Depence["login"] = DM->operation["code_utilisateur"];
  DM->Depence["en_caisser"] = "NO";
  DM->Caisse.First();
  DM->Depence["id_caisse"] = DM->Caisse["id_caise"];
  C_depenceF->Begins();
}

void Tliste_depenceF::AdvSmoothButton4Click() {
  C_depenceF->ShowReason(DM->Depence["type_depnce"].text());
  C_depenceF->Label13->Caption("edit");
  C_depenceF->Label14->Caption(DM->Depence["montant_dep"].text());
  DM->Caisse.FilterBy("id_caise=" + inQuotes(DM->Depence["id_caisse"].text()));
  DM->Depence.Edit();
  C_depenceF->Begins();
  showEntry();
  beginEntry();
}

// Nothing goes back to the desk. For an expense without a desk the amount is sought in the desks, which have
// none: the row stays, and the insert that no desk's row began is given up.
void Tliste_depenceF::AdvSmoothButton3Click() {
  if (DM->Depence.Eof() || !ConfirmDeletion()) return;
  if (!DM->Depence["id_caisse"].text().empty()) return DM->Depence.Delete();
  DM->Caisse.FilterBy("id_caise=''");
  DM->Caisse.Edit();
  try {
    DM->Caisse["montant_dep"].get();
  } catch (...) {
    DM->Caisse.Cancel();
    throw;
  }
}

void Tliste_depenceF::AdvSmoothButton2Click() {
  frxReport1->ShowReport(true);
}

/// Any combination but these three leaves the filter as it was.
void Tliste_depenceF::RzShapeButton2Click() {
  const std::string type = RzDBLookupComboBox1->Text();
  const std::string byType = "type_depnce=" + inQuotes(type);
  if (dates_.NoneGiven() && !type.empty()) DM->Depence.FilterBy(byType);
  if (dates_.BothGiven() && !type.empty()) DM->Depence.FilterBy(dates_.Pieces() + "and " + byType);
  if (dates_.BothGiven() && type.empty()) DM->Depence.FilterBy(dates_.Pieces());
}

void Tliste_depenceF::RzLabel10Click() {
  DM->Depence.Filtered(false);
  RzDBLookupComboBox1->Clear();
  dates_.Clear();
}

}  // namespace tavoline
