#include "sales/Commande_avnU.h"

#include <QtGui/QFont>
#include <QtGui/QShortcut>

#include "data/DMU.h"
#include "data/value/Regional.h"
#include "data/value/Text.h"
#include "sales/OrderRow.h"
#include "sales/champsU.h"
#include "sales/commandeU.h"
#include "sales/qteU.h"
#include "shell/MenuU.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/report/Report.h"

namespace tavoline {
namespace {

constexpr int PhotoTileWidth = 140, PhotoTileHeight = 130;  // pixels
constexpr int PriceHeight = 30, PriceEdge = 10;

}  // namespace

TCommande_avnF* Commande_avnF = nullptr;

TCommande_avnF::TCommande_avnF()
    : TForm("Commande_avnF"),
      frxReport1(std::make_unique<Report>("TCommande_avnF", "frxReport1", this)),
      frxReport2(std::make_unique<Report>("TCommande_avnF", "frxReport2", this)) {
  setupUi(this);
  news_ = new OrderNews(Totaux);
  search_ = new ArticleSearch(Recherche, this);
  RzBitBtn1->OnClick = [this] { RzBitBtn1Click(); };
  DBLookupListBox1->OnClick = [this] { DBLookupListBox1Click(); };
  RzDBGrid1->OnCellClick = [this] { RzDBGrid1CellClick(); };
  Qte->OnClick = [this] { QteClick(); };
  Supp->OnClick = [this] { SuppClick(); };
  Obs->OnClick = [this] { ObsClick(); };
  Remisse->OnClick = [this] { RemisseClick(); };
  Cloturer->OnClick = [this] { CloturerClick(); };
  Imprimer->OnClick = [this] { ImprimerClick(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Enregistrer->OnClick = [this] { EnregistrerClick(); };
  wireSearch();
  wireKeys();
  Ready();
}

TCommande_avnF::~TCommande_avnF() = default;

void TCommande_avnF::wireSearch() {
  search_->OnFound = [this](const ArticleSearch::Article* sought) { comeForward(sought); };
  search_->OnTaken = [this](const ArticleSearch::Article& sought) { ArticleClick(sought.designation); };
}

void TCommande_avnF::wireKeys() {
  const auto presses = [this](Qt::Key key, Button* button) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, button, &Button::click);
  };
  presses(Qt::Key_F2, Qte);
  presses(Qt::Key_F4, Supp);
  presses(Qt::Key_F6, Remisse);
  presses(Qt::Key_F8, Cloturer);
  connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, Recherche, [this] {
    Recherche->setFocus(Qt::ShortcutFocusReason);
    Recherche->selectAll();
  });
}

/// The category of the article that is sought, and its tile in it. One without a category has no tile.
void TCommande_avnF::comeForward(const ArticleSearch::Article* sought) {
  news_->Choose(sought ? sought->code : std::string());
  if (!sought || DM->type_produit.RecordOf("code", sought->category) < 0) return;
  if (DBLookupListBox1->KeyValue() != sought->category) DBLookupListBox1->Choose(sought->category);
  for (ShapeButton* tile : RzFlowPanel1->findChildren<ShapeButton*>())
    if (tile->Caption() == sought->designation) return RzFlowPanel1->Reveal(tile);
}

void TCommande_avnF::showEvent(QShowEvent* event) {
  TForm::showEvent(event);
  news_->schedule();
}

void TCommande_avnF::FormShow() {
  search_->Clear();
  RzBitBtn1->Click();
  DM->Article.Filtered(false);
}

void TCommande_avnF::DBLookupListBox1Click() {
  RzBitBtn1->Click();
}

/// Builds the article tiles of the chosen category, by article code.
void TCommande_avnF::RzBitBtn1Click() {
  DM->Article.Filtered(false);
  RzFlowPanel1->clear();
  news_->forgetTiles();
  const Value category = DBLookupListBox1->KeyValue();
  int counter = 0;
  for (DM->Article.First(); !DM->Article.Eof(); DM->Article.Next())
    if (!category.isNull() && DM->Article["id_categorie"] == category) addTile(counter++);
  RzFlowPanel1->setHint(category.isNull() ? tr("Choisissez une catégorie")
                                          : tr("Cette catégorie n'a pas d'article"));
  news_->schedule();
}

void TCommande_avnF::addTile(int counter) {
  const std::string designation = DM->Article["designation_article"].text();
  auto* panel = new Panel;
  panel->setObjectName(QStringLiteral("pl%1").arg(counter));
  panel->setFixedSize(PhotoTileWidth, PhotoTileHeight);
  panel->Caption(designation);
  panel->OnClick = [this, designation] { ArticleClick(designation); };

  auto* image = new ShapeButton(panel);
  image->setObjectName(QStringLiteral("ig%1").arg(counter));
  image->Picture(DM->Article["IMAGE"].get().toBytes());
  image->Caption(designation);
  image->captionX = 20;
  image->OnClick = [this, designation] { ArticleClick(designation); };
  image->setGeometry(panel->rect());
  image->reservedBelow = PriceHeight;
  news_->addTile(image);

  auto* price = new Label(panel);
  price->setObjectName(QStringLiteral("l2%1").arg(counter));
  price->Caption(DM->Article["prix_vente"].text());
  price->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  price->setFont(QFont(QStringLiteral("Arial Black"), 11, QFont::Bold));
  price->setProperty("kind", "price");
  price->setGeometry(PriceEdge, PhotoTileHeight - PriceHeight, PhotoTileWidth - 2 * PriceEdge, PriceHeight);
  RzFlowPanel1->add(panel);
}

std::string TCommande_avnF::ofTheOrder() {
  return "n_commande=" + inQuotes(DBText3->Caption());
}

/// Adds one of the tapped article to the order, or one more of it at the article's price of the moment.
void TCommande_avnF::ArticleClick(const std::string& senderCaption) {
  const bool repeated = (unfinished_.stock || unfinished_.table) && Label6->Caption() == senderCaption;
  finishTap();
  if (repeated) return;
  DM->Refresh({&DM->commande, &DM->Table_, &DM->Article});
  Label6->Caption(senderCaption);
  DM->Article.FilterBy("designation_article=" + inBareQuotes(Label6->Caption()));
  DM->relation_commande1.FilterBy(ofTheOrder());
  DM->sum_commande.FilterBy(ofTheOrder());
  DM->relation_commande.FilterBy(ofTheOrder() + "and code_article=" + inQuotes(DBText4->Caption()));
  RzPanel10->setVisible(true);
  if (DBText11->Caption() == "NON")
    tapWithoutStock();
  else if (DBText11->Caption() == "OUI")
    tapFromStock();
  RzDBGrid1->Mark("code_article", DM->Article["code_barre"]);
}

void TCommande_avnF::tapWithoutStock() {
  if (lineExists()) {
    updateLine();
    reopenLines();
  } else {
    insertLine();
    unfinished_.table = true;
    reopenLines();
    markTapped();
  }
  DM->Table_.Filtered(false);
}

void TCommande_avnF::tapFromStock() {
  if (readInteger(DBText13->Caption()) < 1) return ShowMessage("STOCK=0");
  unfinished_.article = DBText4->Caption();
  if (lineExists()) {
    Label7->Caption(DM->relation_commande["qte"].text());
    updateLine();
    takeFromStock(DM->relation_commande["qte"] - readInteger(Label7->Caption()));
    reopenLines();
  } else {
    insertLine();
    unfinished_.table = true;
    takeFromStock(DM->relation_commande["qte"]);
    reopenLines();
    markTapped();
  }
  DM->Table_.Filtered(false);
}

void TCommande_avnF::takeFromStock(const Value& taken) {
  unfinished_.stock = true;
  unfinished_.taken = taken;
  DM->Article.Edit();
  DM->Article["qte_stock"] = DM->Article["qte_stock"] - taken;
  orElse([] { DM->Article.Post(); }, [] { DM->Article.Cancel(); },
         "La ligne est dans la commande, mais son stock n'est pas encore diminué.\nTouchez encore l'article "
         ": il ne sera pas compté deux fois.");
  unfinished_.stock = false;
}

void TCommande_avnF::markTapped() {
  orElse([this] { markTable(); }, [] { DM->Table_.Cancel(); },
         "La ligne est dans la commande, mais la table n'est pas encore marquée occupée.\nTouchez encore "
         "l'article : il ne sera pas compté deux fois.");
  unfinished_.table = false;
}

/// What a tap still owes, because the store refused it: its line stands, and is not added again.
void TCommande_avnF::finishTap() {
  if (!unfinished_.stock && !unfinished_.table) return;
  if (unfinished_.stock) {
    DM->Article.Reopen();
    DM->Article.FilterBy("code_barre=" + inQuotes(unfinished_.article));
    takeFromStock(unfinished_.taken);
  }
  reopenLines();
  if (unfinished_.table) markTapped();
  DM->Table_.Filtered(false);
}

bool TCommande_avnF::lineExists() {
  return !DBText1->Caption().empty();
}

void TCommande_avnF::updateLine() {
  Label5->Caption("edit");
  DM->relation_commande.Edit();
  DM->relation_commande["n_commande"] = DBText3->Caption();
  DM->relation_commande["code_article"] = DM->Article["code_barre"];
  DM->relation_commande["article"] = DM->Article["designation_article"];
  DM->relation_commande["qte"] = DM->relation_commande["qte"] + 1;
  DM->relation_commande["prix"] = DM->Article["prix_vente"];
  DM->relation_commande["total"] = DM->relation_commande["qte"] * DM->relation_commande["prix"];
  postLine();
}

void TCommande_avnF::insertLine() {
  Label5->Caption("insert");
  DM->relation_commande.Insert();
  DM->relation_commande["n_commande"] = DBText3->Caption();
  DM->relation_commande["code_article"] = DM->Article["code_barre"];
  DM->relation_commande["article"] = DM->Article["designation_article"];
  DM->relation_commande["qte"] = 1;
  DM->relation_commande["prix"] = DM->Article["prix_vente"];
  DM->relation_commande["total"] = DM->relation_commande["qte"] * DM->relation_commande["prix"];
  postLine();
}

/// A line that is refused does not wait: the next tap would post it, and add its own.
void TCommande_avnF::postLine() {
  orElse([] { DM->relation_commande.Post(); }, [] { DM->relation_commande.Cancel(); }, "");
}

void TCommande_avnF::reopenLines() {
  DM->Reopen({&DM->relation_commande, &DM->relation_commande1, &DM->sum_commande});
}

void TCommande_avnF::markTable() {
  filterTable(RzLabel3->Caption());
  DM->Table_.Edit();
  DM->Table_["etat"] = "ON";
  DM->Table_["n_commande"] = DM->commande["n_commande"];
  DM->Table_.Post();
}

/// A click on a line makes Article stand on the line's article; the keyboard does not.
void TCommande_avnF::RzDBGrid1CellClick() {
  DM->Article.FilterBy("code_barre=" + inBareQuotes(DBText14->Caption()));
  RzPanel10->setVisible(true);
}

/// Removes the selected line. Stock goes back to the article on which Article stands: the last one tapped or
/// clicked, whichever line is removed.
void TCommande_avnF::SuppClick() {
  if (DM->relation_commande1.Eof()) return;
  if (!Confirm("voulez-vous vraiment supprimer ", "confirmation")) return;
  const std::string line = DBText15->Caption() + " " + DBText14->Caption();
  if (DM->Article["desto"] == "OUI" && unfinished_.returned != line) {
    DM->Article.Edit();
    DM->Article["qte_stock"] = DM->Article["qte_stock"] + DM->relation_commande1["qte"];
    orElse([] { DM->Article.Post(); }, [] { DM->Article.Cancel(); }, "");
    unfinished_.returned = line;
  }
  orElse(
      [] { DM->relation_commande1.Delete(); }, [] {},
      unfinished_.returned == line
          ? "Le stock est rendu, mais la ligne est encore dans la commande.\nSupprimez-la encore : le stock "
            "ne sera pas rendu deux fois."
          : "");
  unfinished_.returned.clear();
  DM->Reopen({&DM->relation_commande, &DM->sum_commande});
}

void TCommande_avnF::QteClick() {
  if (DM->relation_commande1.Eof()) return;
  qteF->Show();
  qteF->Label2->Caption(DM->relation_commande1["qte"].text());
}

/// The inputs are enabled after the dialog has returned, and so for its next showing.
void TCommande_avnF::ObsClick() {
  champsF->ShowModal();
  champsF->DBEdit1->setEnabled(true);
  champsF->DBEdit3->setEnabled(false);
}

void TCommande_avnF::RemisseClick() {
  champsF->Label9->Caption(DBText3->Caption());
  champsF->ShowModal();
  champsF->DBEdit1->setEnabled(true);
  champsF->DBEdit3->setEnabled(true);
}

void TCommande_avnF::ImprimerClick() {
  if (DM->relation_commande1.Eof()) return ShowMessage("Opétation incomplet");
  filterTickets();
  frxReport2->ShowReport(true);
}

void TCommande_avnF::filterTickets() {
  DM->imp_commande.Reopen();
  DM->imp_commande.FilterBy("n_commande=" + inBareQuotes(DBText3->Caption()));
}

/// Leaves the order waiting on its table; it stays "Encours" and its totals stay as they were.
void TCommande_avnF::EnregistrerClick() {
  finishTap();
  if (DM->relation_commande1.Eof()) return ShowMessage("Opétation incomplet");
  DM->commande.Edit();
  DM->commande["login"] = DBText8->Caption();
  DM->commande.Post();
  filterTable(RzLabel3->Caption());
  DM->Table_.Edit();
  DM->Table_["control"] = "open";
  DM->Table_.Post();
  Close();
  MenuF->RzGroupBar2->setEnabled(true);
  DM->Table_.Filtered(false);
  DM->commande.Filtered(false);
  DM->relation_commande.Filtered(false);
  DM->relation_commande1.Filtered(false);
  DM->sum_commande.Filtered(false);
  commandeF->RzButton1->Click();
  RzPanel10->setVisible(false);
  MenuF->Label2->Caption("");
}

/// Leaves an order without lines: the order goes and the table is free. With lines the screen stays, the
/// menu's column enabled.
void TCommande_avnF::FermerClick() {
  DM->Reopen({&DM->relation_commande1, &DM->relation_commande});
  MenuF->RzGroupBar2->setEnabled(true);
  if (!DBText15->Caption().empty()) return;
  freeTable();
  MenuF->Label2->Caption("");
  if (!DM->commande.RowGone()) DM->commande.Delete();
  RzPanel10->setVisible(false);
  DM->Reopen({&DM->commande, &DM->C});
  DM->Table_.Filtered(false);
  DM->commande.Filtered(false);
  Close();
  commandeF->RzButton1->Click();
}

void TCommande_avnF::freeTable() {
  filterTable(RzLabel3->Caption());
  DM->Table_.Edit();
  DM->Table_["etat"] = "OFF";
  DM->Table_["n_commande"] = 0;
  DM->Table_["control"] = "open";
  DM->Table_.Post();
}

}  // namespace tavoline
