#include "sales/RenduU.h"

#include <QtWidgets/QStyle>

#include "data/DMU.h"
#include "data/value/Regional.h"
#include "sales/Commande_avnU.h"
#include "sales/commandeU.h"
#include "shell/MenuU.h"
#include "toolkit/report/Report.h"

namespace tavoline {

TRenduF* RenduF = nullptr;

TRenduF::TRenduF() : TForm("RenduF") {
  setupUi(this);
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  Edit1->OnChange = [this] { Edit1Change(); };
  Edit1->OnEnter = [this] { Edit1Enter(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  Exact->OnClick = [this] { type(DM->commande["tcc"].text()); };
  Billet500->OnClick = [this] { type("500"); };
  Billet1000->OnClick = [this] { type("1000"); };
  Billet2000->OnClick = [this] { type("2000"); };
  Ready();
}

/// What the guest gives, in the place of what was typed.
void TRenduF::type(const std::string& amount) {
  Edit1->Text(amount);
  Edit1->SetFocus();
}

/// The amount due is the largest thing until something is typed, then what goes back.
void TRenduF::emphasize() {
  const char* kind = Edit1->Text().empty() ? "total" : "amount";
  if (Du->property("kind") == QLatin1String(kind)) return;
  Du->setProperty("kind", kind);
  Du->style()->unpolish(Du);
  Du->style()->polish(Du);
}

/// The total less the amount taken: below zero when there is change to give.
void TRenduF::Edit1Change() {
  emphasize();
  if (Edit1->Text().empty()) return Label10->Caption("");
  Label10->Caption((DM->commande["tcc"] - readFloat(Edit1->Text())).text());
}

void TRenduF::Edit1Enter() {
  Enregistrer->Click();
}

void TRenduF::EnregistrerClick() {
  DM->commande.Filtered(false);
  DM->relation_commande.Filtered(false);
  DM->relation_commande1.Filtered(false);
  DM->sum_commande.Filtered(false);
  DM->Table_.Filtered(false);
  DM->Table_.Filtered(false);
  commandeF->RzButton1->Click();
  Commande_avnF->Close();
  Edit1->Text("");
  Close();
  Commande_avnF->frxReport1->ShowReport(true);
  MenuF->Label2->Caption("");
  MenuF->RzGroupBar2->setEnabled(true);
}

}  // namespace tavoline
