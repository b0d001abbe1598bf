#include "gestures/Waiter.h"

#include <stdexcept>

#include "data/value/Clock.h"
#include "data/value/Text.h"

namespace tavoline::test {
namespace {

using Fields = std::initializer_list<std::pair<const char*, Value>>;

void fill(Dataset& rows, Fields fields) {
  for (const auto& [name, value] : fields) rows[name] = value;
}

}  // namespace

Menu Menu::of(TDM& dm) {
  Menu menu;
  for (dm.Table_.First(); !dm.Table_.Eof(); dm.Table_.Next())
    menu.tables.push_back(dm.Table_["table"].text());
  for (dm.Article.First(); !dm.Article.Eof(); dm.Article.Next()) {
    const std::string designation = dm.Article["designation_article"].text();
    if (dm.Article["desto"].text() == "OUI" && designation.find('\'') == std::string::npos)
      menu.articles.push_back(designation);
  }
  dm.Caisse.FilterBy("general='NON'");
  menu.desk = dm.Caisse["ID_caise"].text();
  dm.Caisse.Filtered(false);
  menu.login = dm.utilisateur["login"].text();
  if (menu.tables.empty() || menu.articles.empty() || menu.desk.empty() || menu.login.empty())
    throw std::runtime_error("a store to sell from needs tables, articles in stock, a desk and a user");
  return menu;
}

void Waiter::logIn() {
  dm_.utilisateur.Filtered(false);
  dm_.utilisateur.Close();
  dm_.utilisateur.SQL("select*from utilisateur");
  dm_.utilisateur.Open();
  dm_.utilisateur.Close();
  dm_.utilisateur.SQL("select*from utilisateur where login like'" + menu_.login + "%'");
  dm_.utilisateur.Open();
  if (dm_.utilisateur["login"].text() != menu_.login) throw std::runtime_error("no such login");
  for (const char* field : {"nom", "prenom", "role"}) show(dm_.utilisateur[field]);
  show(dm_.op["op"]);
}

bool Waiter::takeTable(const std::string& table) {
  table_ = table;
  dm_.Reopen({&dm_.C, &dm_.Table_, &dm_.commande, &dm_.relation_commande, &dm_.relation_commande1,
              &dm_.imp_commande, &dm_.sum_commande, &dm_.imp_commande});
  filterTable();
  const bool free = dm_.Table_["control"].text() == "open";
  if (free) {
    if (dm_.Table_["etat"].text() == "OFF")
      beginOrder();
    else
      reopenOrder();
    showTiles();
    showOrder();
  }
  dm_.Table_.Filtered(false);
  showMap();
  if (free) writeTable({{"control", "close"}});
  return free;
}

void Waiter::reopenOrder() {
  filterOrder(dm_.Table_["n_commande"].text(), {&dm_.relation_commande1, &dm_.sum_commande, &dm_.commande});
  order_ = dm_.commande["n_commande"].text();
}

void Waiter::beginOrder() {
  dm_.commande.Insert();
  fill(dm_.commande, {{"date_commande", Clock::now()},
                      {"n_commande", dm_.C["C"].isNull() ? Value(1) : dm_.C["C"] + Value(1)},
                      {"n_table", dm_.Table_["id_table"]},
                      {"table", dm_.Table_["table"]},
                      {"login", menu_.login},
                      {"etat_commande", "Encours"},
                      {"en_caisser", "no"}});
  dm_.commande.Post();
  dateOrder();
  order_ = dm_.commande["n_commande"].text();
  filterOrder(order_, {&dm_.relation_commande1, &dm_.sum_commande});
}

bool Waiter::tap(const std::string& designation) {
  dm_.Refresh({&dm_.commande, &dm_.Table_, &dm_.Article});
  dm_.Article.FilterBy("designation_article='" + designation + "'");
  const std::string order = dm_.commande["n_commande"].text();
  filterOrder(order, {&dm_.relation_commande1, &dm_.sum_commande});
  dm_.relation_commande.FilterBy("n_commande=" + inQuotes(order) +
                                 "and code_article=" + inQuotes(dm_.Article["code_barre"].text()));
  if (dm_.Article["desto"].text() != "OUI") throw std::runtime_error("not kept in stock: " + designation);
  if (dm_.Article["qte_stock"].toInteger() < 1) return false;

  const bool standing = !dm_.relation_commande["n_commande"].text().empty();
  const Value before = standing ? dm_.relation_commande["qte"].get() : Value(0);
  standing ? dm_.relation_commande.Edit() : dm_.relation_commande.Insert();
  fill(dm_.relation_commande, {{"n_commande", order},
                               {"code_article", dm_.Article["code_barre"]},
                               {"article", dm_.Article["designation_article"]},
                               {"qte", before + Value(1)},
                               {"prix", dm_.Article["prix_vente"]}});
  dm_.relation_commande["total"] = dm_.relation_commande["qte"] * dm_.relation_commande["prix"];
  dm_.relation_commande.Post();

  stock(dm_.Article["qte_stock"] - dm_.relation_commande["qte"] + before);
  dm_.Reopen({&dm_.relation_commande, &dm_.relation_commande1, &dm_.sum_commande});
  if (!standing) writeTable({{"etat", "ON"}, {"n_commande", dm_.commande["n_commande"]}});
  dm_.Table_.Filtered(false);
  showOrder();
  showArticle();
  return true;
}

void Waiter::removeLine() {
  if (!hasLines()) return;
  dm_.Article.FilterBy("code_barre=" + inQuotes(dm_.relation_commande1["code_article"].text()));
  if (dm_.Article["desto"].text() == "OUI") stock(dm_.Article["qte_stock"] + dm_.relation_commande1["qte"]);
  dm_.relation_commande1.Delete();
  dm_.Reopen({&dm_.relation_commande, &dm_.sum_commande});
  showOrder();
  showArticle();
}

void Waiter::save() {
  if (!hasLines()) throw std::runtime_error("no line");
  dm_.commande.Edit();
  dm_.commande["login"] = menu_.login;
  dm_.commande.Post();
  writeTable({{"control", "open"}});
  backToMap();
}

void Waiter::leave() {
  dm_.Reopen({&dm_.relation_commande1, &dm_.relation_commande});
  if (hasLines()) throw std::runtime_error("the order has lines");
  writeTable({{"etat", "OFF"}, {"n_commande", 0}, {"control", "open"}});
  dm_.commande.Delete();
  dm_.Reopen({&dm_.commande, &dm_.C});
  backToMap();
}

void Waiter::closeTable() {
  dm_.Reopen({&dm_.commande, &dm_.relation_commande, &dm_.relation_commande1});
  if (!hasLines()) throw std::runtime_error("no line");
  dm_.commande.Edit();
  dm_.commande.Post();
  dm_.Table_.Edit();
  dm_.Table_.Post();
  filterOrder(order_, {&dm_.commande, &dm_.sum_commande});

  const auto post = [this](Fields fields) {
    dm_.commande.Edit();
    fill(dm_.commande, fields);
    dm_.commande.Post();
  };
  post({{"login", menu_.login},
        {"etat_commande", "Terminer"},
        {"HT", dm_.sum_commande["SumOftotal"]},
        {"date_commande", Clock::now()}});
  dateOrder();
  post({{"remi", dm_.commande["remise"] * dm_.commande["HT"] / Value(100)}});
  const bool taxed = dm_.TVA["utilisation"].text() == "OUI";
  post({{"TVA", taxed ? dm_.commande["HT"] * dm_.TVA["tva"] / Value(100) : Value(0)}});
  post({{"tcc", dm_.commande["HT"] + dm_.commande["TVA"] - dm_.commande["remi"]}, {"id_caisse", menu_.desk}});

  dm_.Caisse.FilterBy("id_caise=" + inQuotes(menu_.desk));
  dm_.Caisse.Edit();
  dm_.Caisse["solde"] = dm_.Caisse["solde"] + dm_.commande["tcc"];
  dm_.Caisse.Post();
  dm_.Caisse.Filtered(false);

  dm_.imp_commande.Reopen();
  dm_.imp_commande.FilterBy("n_commande=" + inQuotes(order_));
  writeTable({{"etat", "OFF"}, {"n_commande", 0}, {"control", "open"}});

  for (dm_.imp_commande.First(); !dm_.imp_commande.Eof(); dm_.imp_commande.Next())  // the ticket
    for (const char* field : {"article", "qte", "prix", "total", "tcc", "nom"}) show(dm_.imp_commande[field]);
  backToMap();
}

void Waiter::backToMap() {
  for (Dataset* dataset :
       {&dm_.Table_, &dm_.commande, &dm_.relation_commande, &dm_.relation_commande1, &dm_.sum_commande})
    dataset->Filtered(false);
  showMap();
}

void Waiter::serve(int orders) {
  constexpr std::size_t kLines = 8;
  for (int order = 0; order < orders; ++order, ++turn_) {
    const std::string& table = menu_.tables[turn_ % menu_.tables.size()];
    if (!takeTable(table)) throw std::runtime_error("held: " + table);
    for (std::size_t line = 0; line < kLines; ++line)
      tap(menu_.articles[(turn_ + line) % menu_.articles.size()]);
    tap(menu_.articles[turn_ % menu_.articles.size()]);
    closeTable();
    dm_.Idle();
  }
}

/// The day of the order in columns of its own, which is a post by itself.
void Waiter::dateOrder() {
  const DateTime date = dm_.commande["date_commande"].toDateTime();
  dm_.commande.Edit();
  fill(dm_.commande, {{"J", date.day()}, {"M", date.month()}, {"A", date.year()}});
  dm_.commande.Post();
}

void Waiter::filterOrder(const std::string& order, std::initializer_list<Dataset*> all) {
  for (Dataset* rows : all) rows->FilterBy("n_commande=" + inQuotes(order));
}

void Waiter::stock(const Value& now) {
  dm_.Article.Edit();
  dm_.Article["qte_stock"] = now;
  dm_.Article.Post();
}

void Waiter::filterTable() {
  dm_.Table_.FilterBy("table='" + table_ + "'");
}

void Waiter::writeTable(std::initializer_list<std::pair<const char*, Value>> fields) {
  filterTable();
  dm_.Table_.Edit();
  fill(dm_.Table_, fields);
  dm_.Table_.Post();
}

void Waiter::showMap() {
  for (dm_.Table_.First(); !dm_.Table_.Eof(); dm_.Table_.Next())
    for (const char* field : {"id_endroit", "table", "etat"}) show(dm_.Table_[field]);
}

void Waiter::showTiles() {
  dm_.Article.Filtered(false);
  for (dm_.Article.First(); !dm_.Article.Eof(); dm_.Article.Next()) {
    if (dm_.Article["id_categorie"].get() != Value(1)) continue;
    for (const char* field : {"designation_article", "prix_vente"}) show(dm_.Article[field]);
    if (const SharedBytes picture = dm_.Article["IMAGE"].get().toBytes()) shown_ += picture->size();
  }
}

void Waiter::showOrder() {
  const std::size_t rows = dm_.relation_commande1.RecordCount();
  for (const char* field : {"qte", "article", "prix", "total"}) {
    const auto column = static_cast<std::size_t>(dm_.relation_commande1.ColumnIndex(field));
    for (std::size_t row = 0; row < rows; ++row) show(dm_.relation_commande1.ValueAt(row, column));
  }
  for (const char* field : {"code_article", "n_commande"}) show(dm_.relation_commande1[field]);
  show(dm_.relation_commande["n_commande"]);
  show(dm_.sum_commande["SumOftotal"]);
  show(dm_.commande["n_commande"]);
}

void Waiter::showArticle() {
  for (const char* field : {"code_barre", "designation_article", "prix_vente", "qte_stock", "desto"})
    show(dm_.Article[field]);
}

}  // namespace tavoline::test
