#include "sales/commandeU.h"

#include <QtGui/QFont>
#include <QtGui/QIcon>

#include "data/DMU.h"
#include "data/value/Clock.h"
#include "data/value/Text.h"
#include "sales/Commande_avnU.h"
#include "sales/OrderRow.h"
#include "sales/TablePictures.h"
#include "shell/MenuU.h"
#include "shell/OrElse.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {
namespace {

constexpr int TileWidth = 100, TileHeight = 108;  // pixels
constexpr const char* kHeld = "object-locked";

std::string counted(int number, const char* word) {
  return std::to_string(number) + " " + word + (number > 1 ? "s" : "");
}

}  // namespace

TcommandeF* commandeF = nullptr;

TcommandeF::TcommandeF() : TForm("commandeF") {
  setupUi(this);
  Image1->setPixmap(tablePicture(TablePicture::Free));
  Image2->setPixmap(tablePicture(TablePicture::Busy));
  Cadenas->setPixmap(QIcon::fromTheme(kHeld).pixmap(20));
  RzButton1->OnClick = [this] { RzButton1Click(); };
  DBLookupListBox1->OnNote = [this](const Value& place) { return countsOf(place); };
  DBLookupListBox1->OnClick = [this] { DBLookupListBox1Click(); };
  Fermer->OnClick = [this] { FermerClick(); };
  Ready();
}

void TcommandeF::FormShow() {
  RzButton1->Click();
}

void TcommandeF::FormClose() {
  MenuF->Label1->Caption("");
}

void TcommandeF::FermerClick() {
  Close();
}

void TcommandeF::DBLookupListBox1Click() {
  RzButton1->Click();
}

/// Builds the tiles anew, in the order of the rows of Table_.
void TcommandeF::RzButton1Click() {
  RzFlowPanel1->clear();
  tables_.clear();
  counts_.clear();
  const Value place = DBLookupListBox1->KeyValue();
  int counter = 0;
  for (DM->Table_.First(); !DM->Table_.Eof(); DM->Table_.Next()) {
    count();
    if (!place.isNull() && DM->Table_["id_endroit"] == place) addTile(counter++);
  }
  RzFlowPanel1->setHint(place.isNull() ? tr("Choisissez un endroit") : tr("Cet endroit n'a pas de table"));
  DBLookupListBox1->NotesChanged();
  told_ = false;
  if (isVisible()) tellRoom();
}

void TcommandeF::addTile(int counter) {
  auto* tile = new ShapeButton;
  tile->setObjectName(QStringLiteral("btn%1").arg(counter));
  tile->Caption(DM->Table_["table"].text());
  tile->setFont(QFont(QStringLiteral("Arial"), 12, QFont::Bold));
  tile->captionX = tile->captionRight = 15;  // within the edge of the drawn table
  tile->captionPlace = Qt::AlignVCenter;
  if (DM->Table_["etat"] == "OFF") tile->Picture(Image1->pixmap());
  if (DM->Table_["etat"] == "ON") tile->Picture(Image2->pixmap());
  tile->setFixedSize(TileWidth, TileHeight);
  tile->OnClick = [this, tile] { MaProcedure(*tile); };
  RzFlowPanel1->add(tile);
  tables_.push_back({tile, DM->Table_["n_commande"].get(), DM->Table_["control"] != "open"});
}

void TcommandeF::count() {
  auto& [free, busy] = counts_[DM->Table_["id_endroit"].text()];
  ++(DM->Table_["etat"] == "OFF" ? free : busy);
}

std::string TcommandeF::countsOf(const Value& place) const {
  const auto found = counts_.find(place.text());
  if (found == counts_.end()) return {};
  const auto [free, busy] = found->second;
  if (busy == 0) return counted(free, "libre");
  return counted(free, "libre") + " · " + counted(busy, "occupée");
}

/// Beneath an order the map is not seen, and reads nothing for it.
void TcommandeF::showEvent(QShowEvent* event) {
  TForm::showEvent(event);
  if (!told_) guarded([this] { tellRoom(); });
}

void TcommandeF::tellRoom() {
  told_ = true;
  if (!DM) return;
  room_.read(DM->store());
  for (const auto& [tile, order, held] : tables_) {
    TileNotes notes;
    notes.below = room_.of(order);
    if (held) notes.mark = QString::fromLatin1(kHeld);
    tile->Tell(notes);
  }
}

/// Takes the table of the tile, if nobody else works on it, and hands over to the order entry. A held table
/// leaves the menu's column disabled and the order mark set, until an order is left here.
void TcommandeF::MaProcedure(const ShapeButton& Sender) {
  MenuF->RzGroupBar2->setEnabled(false);
  MenuF->Label2->Caption("Active");
  const std::string name = Sender.Caption();
  readSaleAfresh();
  filterTable(name);
  if (DM->Table_["control"] != "open") {
    ShowMessage("cette table est reserver par un autre utilisateur , merci de pationter");
    DM->Table_.Filtered(false);
    RzButton1->Click();
    return;
  }
  if (DM->Table_["etat"] == "OFF")
    startOrder(name);
  else
    reopenOrder(name);
}

void TcommandeF::readSaleAfresh() {
  DM->Reopen({&DM->C, &DM->Table_, &DM->commande, &DM->relation_commande, &DM->relation_commande1,
              &DM->imp_commande, &DM->sum_commande, &DM->imp_commande});
}

void TcommandeF::reopenOrder(const std::string& name) {
  const std::string ofTheOrder = "n_commande=" + inQuotes(DM->Table_["n_commande"].text());
  DM->relation_commande1.FilterBy(ofTheOrder);
  DM->sum_commande.FilterBy(ofTheOrder);
  DM->commande.FilterBy(ofTheOrder);
  dockOrderEntry();
  Commande_avnF->RzLabel3->Caption(name);
  lockTable(name);
  Commande_avnF->Label4->Caption("edit");
}

void TcommandeF::startOrder(const std::string& name) {
  Commande_avnF->RzLabel3->Caption(name);
  const bool begun = begun_ == name && DM->commande.Locate("n_commande", begunOrder_);
  if (!begun) insertOrder(name);
  orElse(
      writeDateParts, [] { DM->commande.Cancel(); },
      "La commande est commencée, mais sa table n'est pas encore prise.\nTouchez encore la table : la même "
      "commande s'ouvrira.");
  begun_.clear();
  DM->relation_commande1.FilterBy("n_commande=" + inQuotes(DBText1->Caption()));
  DM->sum_commande.FilterBy("n_commande=" + inQuotes(DBText1->Caption()));
  dockOrderEntry();
  lockTable(name);
}

void TcommandeF::insertOrder(const std::string& name) {
  DM->commande.Insert();
  Commande_avnF->Label4->Caption("insert");
  DM->commande["date_commande"] = Clock::now();
  // A filter left on the orders may show none of them where there are some.
  if (DM->commande.Eof() && DM->C["C"].isNull())
    DM->commande["n_commande"] = 1;
  else
    DM->commande["n_commande"] = DM->C["C"] + 1;
  DM->commande["n_table"] = DM->Table_["id_table"];
  DM->commande["table"] = DM->Table_["table"];
  DM->commande["login"] = DBText2->Caption();
  DM->commande["etat_commande"] = "Encours";
  DM->commande["en_caisser"] = "no";
  DM->commande.Post();
  begun_ = name;
  begunOrder_ = DM->commande["n_commande"];
}

void TcommandeF::dockOrderEntry() {
  Commande_avnF->Dock(MenuF->RzPanel4);
  Commande_avnF->Show();
}

/// The map behind the order is redrawn from all tables before the lock is written.
void TcommandeF::lockTable(const std::string& name) {
  DM->Table_.Filtered(false);
  RzButton1->Click();
  filterTable(name);
  DM->Table_.Edit();
  DM->Table_["control"] = "close";
  orElse([] { DM->Table_.Post(); }, [] {},
         "La commande est ouverte ici, mais la table n'est pas encore réservée à ce poste. Elle le sera au "
         "prochain article.");
}

}  // namespace tavoline
