#include "catalogue/Liste_produitU.h"

#include <QtGui/QAction>

#include "catalogue/C_articleU.h"
#include "data/DMU.h"
#include "data/value/Text.h"
#include "shell/Entry.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/report/Report.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {

TListe_produitF* Liste_produitF = nullptr;

TListe_produitF::TListe_produitF()
    : TForm("Liste_produitF"), frxReport1(std::make_unique<Report>("TListe_produitF", "frxReport1", this)) {
  setupUi(this);
  Ajouter->OnClick = [this] { AjouterClick(); };
  Modifier->OnClick = [this] { ModifierClick(); };
  Imprimer->OnClick = [this] { ImprimerClick(); };
  Filtrer->OnClick = [this] { FiltrerClick(); };
  Initialiser->OnClick = [this] { InitialiserClick(); };
  RzRapidFireButton1->OnClick = [this] { RzRapidFireButton1Click(); };
  RzEdit1->OnEnter = RzEdit3->OnEnter = RzDBLookupComboBox1->OnEnter = [this] { Filtrer->Click(); };
  DBGridEh1->OnDblClick = [this] { DBGridEh1DblClick(); };
  DBGridEh1->OnCellColour = [this](Dataset& rows, std::size_t record, const std::string& field) {
    return DBGridEh1CellColour(rows, record, field);
  };
  deletes(DM->Article, x7);
  quits(DM->Article, *this, Quitter);
  navigates(DM->Article, Premier, Precedent, Suivant, Dernier);

  auto* Annulerlesfiltres1 = new QAction(QStringLiteral("Annuler les filtres"), this);
  Annulerlesfiltres1->setObjectName(QStringLiteral("Annulerlesfiltres1"));
  Annulerlesfiltres1->setShortcut(Qt::Key_Escape);
  connect(Annulerlesfiltres1, &QAction::triggered, this, [this] { guarded([this] { InitialiserClick(); }); });
  addAction(Annulerlesfiltres1);
  Ready();
}

TListe_produitF::~TListe_produitF() = default;

void TListe_produitF::showEntry(const char* mode) {
  C_articleF->Label5->Caption(mode);
  showInMainArea(*C_articleF);
}

// The code is the count of articles plus one, as text: after a deletion it may be one that exists.
void TListe_produitF::AjouterClick() {
  DM->A.Reopen();
  showEntry("Insert");
  C_articleF->DBEdit2->SetFocus();
  DM->Article.Insert();
  C_articleF->DBEdit1->Text((DM->A["A"] + Value(1)).text());
  beginEntry();
}

void TListe_produitF::ModifierClick() {
  showEntry("Edit");
  DM->Article.Edit();
  beginEntry();
}

// In the place of a print button, and without an action.
void TListe_produitF::ImprimerClick() {}

void TListe_produitF::FiltrerClick() {
  const std::string C = RzEdit1->Text(), D = RzEdit3->Text(), T = RzDBLookupComboBox1->KeyValue().text();
  const bool c = !C.empty(), d = !D.empty(), t = !T.empty();
  const std::string byCode = "code_barre=" + inQuotes(C), byName = "designation_article=" + inQuotes(D),
                    byType = "id_categorie=" + inQuotes(T);
  if (c && !d && !t) DM->Article.FilterBy(byCode);
  if (c && d && !t) DM->Article.FilterBy(byCode + "and " + byName);
  if (!c && d && !t) DM->Article.FilterBy(byName);
  if (!c && !d && t) DM->Article.FilterBy(byType);
  if (c && !d && t) DM->Article.FilterBy(byCode + "and " + byType);
  if (!c && d && t) DM->Article.FilterBy(byName + "and " + byType);
  if (c && d && t) DM->Article.FilterBy(byName + "and " + byType + "and " + byCode);
}

void TListe_produitF::InitialiserClick() {
  DM->Article.Filtered(false);
  RzDBLookupComboBox1->KeyValue(Value());
  RzEdit1->Clear();
  RzEdit3->Clear();
}

void TListe_produitF::RzRapidFireButton1Click() {
  DM->Achat["code_barre"] = DM->Article["code_barre"];
  DM->Achat["article"] = DM->Article["designation_article"];
  Close();
}

void TListe_produitF::DBGridEh1DblClick() {
  if (!RzRapidFireButton1->isHidden()) return RzRapidFireButton1->Click();
  if (RzRapidFireButton2->isHidden()) Modifier->Click();
}

QColor TListe_produitF::DBGridEh1CellColour(Dataset& rows, std::size_t record,
                                            const std::string& field) const {
  if (!sameName(field, "qte_stock")) return {};
  const auto value = [&](const char* name) {
    return rows.ValueAt(record, static_cast<std::size_t>(rows.ColumnIndex(name)));
  };
  const bool low = value("qte_min") >= value("qte_stock") && value("desto") == Value("OUI");
  return low ? QColor(theme().alert) : QColor();
}

void TListe_produitF::FormClose() {
  RzDBLookupComboBox1->KeyValue(Value());
  DM->Article.Filtered(false);
}

}  // namespace tavoline
