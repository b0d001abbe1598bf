#include "gestures/Waiter.h"

#include <stdexcept>

#include "data/value/Clock.h"
#include "data/value/Text.h"

namespace tavoline::test {

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
  for (Dataset* dataset : {&dm_.C, &dm_.Table_, &dm_.commande, &dm_.relation_commande,
                           &dm_.relation_commande1, &dm_.imp_commande, &dm_.sum_commande, &dm_.imp_commande})
    dataset->Reopen();
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
  const std::string ofOrder = "n_commande=" + inQuotes(dm_.Table_["n_commande"].text());
  for (Dataset* dataset : {&dm_.relation_commande1, &dm_.sum_commande, &dm_.commande})
    dataset->FilterBy(ofOrder);
  order_ = dm_.commande["n_commande"].text();
}

void Waiter::beginOrder() {
  dm_.commande.Insert();
  dm_.commande["date_commande"] = Clock::now();
  dm_.commande["n_commande"] = dm_.commande.Eof() ? Value(1) : dm_.C["C"] + Value(1);
  dm_.commande["n_table"] = dm_.Table_["id_table"];
  dm_.commande["table"] = dm_.Table_["table"];
  dm_.commande["login"] = menu_.login;
  dm_.commande["etat_commande"] = "Encours";
  dm_.commande["en_caisser"] = "no";
  dm_.commande.Post();
  const DateTime now = dm_.commande["date_commande"].toDateTime();
  dm_.commande.Edit();
  dm_.commande["J"] = now.day();
  dm_.commande["M"] = now.month();
  dm_.commande["A"] = now.year();
  dm_.commande.Post();

  order_ = dm_.commande["n_commande"].text();
  dm_.relation_commande1.FilterBy("n_commande=" + inQuotes(order_));
  dm_.sum_commande.FilterBy("n_commande=" + inQuotes(order_));
}

bool Waiter::tap(const std::string& designation) {
  dm_.commande.Refresh();
  dm_.Table_.Refresh();
  dm_.Article.Refresh();
  dm_.Article.FilterBy("designation_article='" + designation + "'");
  const std::string order = dm_.commande["n_commande"].text();
  dm_.relation_commande1.FilterBy("n_commande=" + inQuotes(order));
  dm_.sum_commande.FilterBy("n_commande=" + inQuotes(order));
  dm_.relation_commande.FilterBy("n_commande=" + inQuotes(order) +
                                 "and code_article=" + inQuotes(dm_.Article["code_barre"].text()));
  if (dm_.Article["desto"].text() != "OUI") throw std::runtime_error("not kept in stock: " + designation);
  if (dm_.Article["qte_stock"].toInteger() < 1) return false;

  const bool standing = !dm_.relation_commande["n_commande"].text().empty();
  const Value before = standing ? dm_.relation_commande["qte"].get() : Value(0);
  if (standing)
    dm_.relation_commande.Edit();
  else
    dm_.relation_commande.Insert();
  dm_.relation_commande["n_commande"] = order;
  dm_.relation_commande["code_article"] = dm_.Article["code_barre"];
  dm_.relation_commande["article"] = dm_.Article["designation_article"];
  dm_.relation_commande["qte"] = before + Value(1);
  dm_.relation_commande["prix"] = dm_.Article["prix_vente"];
  dm_.relation_commande["total"] = dm_.relation_commande["qte"] * dm_.relation_commande["prix"];
  dm_.relation_commande.Post();

  dm_.Article.Edit();
  dm_.Article["qte_stock"] = dm_.Article["qte_stock"] - dm_.relation_commande["qte"] + before;
  dm_.Article.Post();

  dm_.relation_commande.Reopen();
  dm_.relation_commande1.Reopen();
  dm_.sum_commande.Reopen();
  if (!standing) writeTable({{"etat", "ON"}, {"n_commande", dm_.commande["n_commande"]}});
  dm_.Table_.Filtered(false);
  showOrder();
  showArticle();
  return true;
}

void Waiter::removeLine() {
  if (!hasLines()) return;
  dm_.Article.FilterBy("code_barre=" + inQuotes(dm_.relation_commande1["code_article"].text()));
  if (dm_.Article["desto"].text() == "OUI") {
    dm_.Article.Edit();
    dm_.Article["qte_stock"] = dm_.Article["qte_stock"] + dm_.relation_commande1["qte"];
    dm_.Article.Post();
  }
  dm_.relation_commande1.Delete();
  dm_.relation_commande.Reopen();
  dm_.sum_commande.Reopen();
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
  dm_.relation_commande1.Reopen();
  dm_.relation_commande.Reopen();
  if (hasLines()) throw std::runtime_error("the order has lines");
  writeTable({{"etat", "OFF"}, {"n_commande", 0}, {"control", "open"}});
  dm_.commande.Delete();
  dm_.commande.Reopen();
  dm_.C.Reopen();
  backToMap();
}

void Waiter::closeTable() {
  dm_.commande.Reopen();
  dm_.relation_commande.Reopen();
  dm_.relation_commande1.Reopen();
  if (!hasLines()) throw std::runtime_error("no line");
  dm_.commande.Edit();
  dm_.commande.Post();
  dm_.Table_.Edit();
  dm_.Table_.Post();
  dm_.commande.FilterBy("n_commande=" + inQuotes(order_));
  dm_.sum_commande.FilterBy("n_commande=" + inQuotes(order_));

  const auto post = [this](auto write) {
    dm_.commande.Edit();
    write();
    dm_.commande.Post();
  };
  post([this] {
    dm_.commande["login"] = menu_.login;
    dm_.commande["etat_commande"] = "Terminer";
    dm_.commande["HT"] = dm_.sum_commande["SumOftotal"];
    dm_.commande["date_commande"] = Clock::now();
  });
  const DateTime closed = dm_.commande["date_commande"].toDateTime();
  post([&] {
    dm_.commande["J"] = closed.day();
    dm_.commande["M"] = closed.month();
    dm_.commande["A"] = closed.year();
  });
  post([this] { dm_.commande["remi"] = dm_.commande["remise"] * dm_.commande["HT"] / Value(100); });
  const bool taxed = dm_.TVA["utilisation"].text() == "OUI";
  post([&] { dm_.commande["TVA"] = taxed ? dm_.commande["HT"] * dm_.TVA["tva"] / Value(100) : Value(0); });
  post([this] {
    dm_.commande["tcc"] = dm_.commande["HT"] + dm_.commande["TVA"] - dm_.commande["remi"];
    dm_.commande["id_caisse"] = menu_.desk;
  });

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

void Waiter::filterTable() {
  dm_.Table_.FilterBy("table='" + table_ + "'");
}

void Waiter::writeTable(std::initializer_list<std::pair<const char*, Value>> fields) {
  filterTable();
  dm_.Table_.Edit();
  for (const auto& [name, value] : fields) dm_.Table_[name] = value;
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
