#include "sales/OrderNews.h"

#include <QtCore/QTimer>

#include "data/DMU.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

bool readable(Dataset& dataset) {
  return dataset.Active() && dataset.State() == DatasetState::Browse && !dataset.RowGone() && !dataset.Eof();
}

// How much of each article the order holds, by code.
std::map<std::string, Value> ordered() {
  Dataset& lines = DM->relation_commande1;
  std::map<std::string, Value> sums;
  if (!lines.Active() || !lines.Filtered()) return sums;  // without its filter it is the whole history
  const int code = lines.ColumnIndex("code_article"), quantity = lines.ColumnIndex("qte");
  if (code < 0 || quantity < 0) return sums;
  for (std::size_t line = 0; line < lines.RecordCount(); ++line) {
    Value& sum = sums[lines.ValueAt(line, std::size_t(code)).text()];
    const Value more = lines.ValueAt(line, std::size_t(quantity));
    sum = sum.isNull() ? more : sum + more;
  }
  return sums;
}

}  // namespace

OrderNews::OrderNews(Label* totals)
    : QObject(totals),
      totals_(totals),
      lines_([this](DataEvent) { schedule(); }),
      articles_([this](DataEvent) { schedule(); }),
      sums_([this](DataEvent) { schedule(); }),
      orders_([this](DataEvent) { schedule(); }) {}

void OrderNews::listen() {
  lines_.listenTo(QStringLiteral("DataSourcerelation_commande1"));
  articles_.listenTo(QStringLiteral("DataSourceArticle"));
  sums_.listenTo(QStringLiteral("DataSourceSum_commande"));
  orders_.listenTo(QStringLiteral("DataSourceCommande"));
}

void OrderNews::forgetTiles() {
  tiles_.clear();
}

void OrderNews::addTile(ShapeButton* tile) {
  listen();
  tiles_[DM->Article["code_barre"].text()] = {tile, DM->Article["desto"] == "OUI",
                                              DM->Article["qte_stock"].get()};
  schedule();
}

void OrderNews::Choose(const std::string& code) {
  chosen_ = code;
  schedule();
}

void OrderNews::schedule() {
  if (!totals_->isVisible() || std::exchange(scheduled_, true)) return;
  QTimer::singleShot(0, this, [this] {
    scheduled_ = false;
    if (DM && totals_->isVisible()) tell();
  });
}

void OrderNews::tell() {
  try {
    readStock();
    tellTiles();
    totals_->Caption(totals());
  } catch (const Error&) {
    totals_->Caption("");
  }
}

// After a tap Article shows the one row whose stock it has moved.
void OrderNews::readStock() {
  if (!DM->Article.Filtered() || !readable(DM->Article)) return;
  const auto found = tiles_.find(DM->Article["code_barre"].text());
  if (found != tiles_.end()) found->second.stock = DM->Article["qte_stock"].get();
}

void OrderNews::tellTiles() {
  const auto quantities = ordered();
  for (const auto& [code, told] : tiles_) {
    if (!told.tile) continue;
    TileNotes notes;
    notes.chosen = code == chosen_;
    if (const auto found = quantities.find(code); found != quantities.end())
      notes.badge = QString::fromStdString(found->second.text());
    if (told.kept) {
      notes.corner = QStringLiteral("Stock ") + QString::fromStdString(told.stock.text());
      notes.nothing = told.stock.isNull() || told.stock < Value(1);
    }
    told.tile->Tell(notes);
  }
}

// With neither of them the total says all.
std::string OrderNews::totals() {
  if (!DM->sum_commande.Filtered() || !readable(DM->sum_commande)) return {};
  if (readable(DM->commande)) discount_ = DM->commande["remise"].get();
  const Value sum = DM->sum_commande["SumOftotal"];
  if (sum.isNull()) return {};
  Value due = sum;
  std::string told;
  if (DM->TVA["utilisation"] == "OUI") {
    const Value tax = sum * DM->TVA["tva"] / 100;
    due = due + tax;
    told += "TVA " + tax.text() + "  ·  ";
  }
  if (!discount_.isNull() && discount_ != Value(0)) {
    const Value off = discount_ * sum / 100;
    due = due - off;
    told += "Remise " + discount_.text() + " % : " + off.text() + "  ·  ";
  }
  return told.empty() ? told : told + "À payer " + due.text() + " DA";
}

}  // namespace tavoline
