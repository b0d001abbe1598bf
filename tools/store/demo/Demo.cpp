#include "tools/store/demo/Demo.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "data/value/Clock.h"
#include "tools/store/Creation.h"
#include "tools/store/demo/History.h"
#include "tools/store/demo/Pictures.h"

namespace tavoline::tool {
namespace {

constexpr int kDemoDays = 26, kDemoOrders = 1150, kDemoDaysNotClosed = 2, kDemoInvoices = 30;
constexpr std::uint64_t kDemoSeed = 2011;
constexpr int kGeneratedDays = 3652, kGeneratedDaysNotClosed = 1;

DateTime earlier(DateTime from, std::int64_t milliseconds) {
  return DateTime::fromMillis(from.millis() - milliseconds);
}

std::size_t articleNamed(std::string_view designation) {
  const auto articles = demoArticles();
  for (std::size_t i = 0; i < articles.size(); ++i)
    if (articles[i].designation == designation) return i;
  throw std::out_of_range("no article " + std::string(designation));
}

Value draw(const Pictures* pictures, std::string_view subject, std::string_view badge, int tint) {
  return pictures ? SharedBytes(std::make_shared<const Bytes>(pictures->card(subject, badge, tint)))
                  : Value();
}

void writeCatalogue(Filler& filler, const Pictures* pictures) {
  Inserter category = filler.inserter("type", {"code", "Type_Produit"});
  for (const DemoCategory& row : demoCategories()) category.run(row.code, row.name);

  Inserter insert =
      filler.inserter("article", {"code_barre", "designation_article", "id_categorie", "qte_min", "qte_stock",
                                  "prix_achat", "prix_vente", "desto", "image"});
  for (std::size_t i = 0; i < demoArticles().size(); ++i) {
    const DemoArticle& row = demoArticles()[i];
    insert.run(articleCode(i), row.designation, row.category, row.minimum, row.stock,
               static_cast<double>(row.purchasePrice), static_cast<double>(row.price),
               row.counted() ? "OUI" : "NON", draw(pictures, row.picture, row.badge, row.category));
  }
  filler.inserter("TVA", {"tva", "utilisation"}).run(kVatRate, "OUI");
}

void writePeople(Filler& filler, const Pictures* pictures) {
  Inserter user = filler.inserter("utilisateur", {"login", "mot_pase", "nom", "prenom", "role", "image"});
  int tint = 0;
  for (const DemoUser& row : demoUsers())
    user.run(row.login, row.password, row.surname, row.firstName, row.role,
             draw(pictures, row.picture, {}, tint++));

  Inserter supplier = filler.inserter(
      "Fournisseur", {"code_fournisseur", "nom_fournisseur", "adresse", "n_telephone", "mail"});
  for (const DemoSupplier& row : demoSuppliers())
    supplier.run(row.code, row.name, row.address, row.telephone, row.mail);

  Inserter client = filler.inserter("client", {"code_client", "nom_client", "Prenom_client", "Telephone",
                                               "adresse", "emial", "date_creation"});
  for (const DemoClient& row : demoClients())
    client.run(row.code, row.surname, row.firstName, row.telephone, row.address, row.mail, Clock::today());
}

// Names as a long list has them: some hundred beginnings, a number behind each.
void writeMoreSuppliers(Filler& filler, std::int64_t count) {
  Inserter supplier = filler.inserter("Fournisseur", {"code_fournisseur", "nom_fournisseur", "adresse"});
  constexpr std::array kTrades = {"Boissons", "Conserves", "Épices",     "Fruits",   "Glaces",
                                  "Laiterie", "Minoterie", "Pâtisserie", "Semoules", "Volailles"};
  constexpr std::array kTowns = {"Alger", "Annaba", "Batna", "Béjaïa", "Blida",
                                 "Médéa", "Oran",   "Sétif", "Tipaza", "Tlemcen"};
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string name = std::string(kTrades[static_cast<std::size_t>(i / 10 % 10)]) + ' ' +
                             kTowns[static_cast<std::size_t>(i % 10)] + ' ' + std::to_string(i / 100 + 1);
    supplier.run("G" + std::to_string(i + 1), name, kTowns[static_cast<std::size_t>(i % 10)]);
  }
}

void writeDesks(Filler& filler, const History& history, DateTime opened) {
  Inserter desk =
      filler.inserter("caisse", {"ID_caise", "nom_caisse", "solde", "date_creation", "general", "select"});
  for (std::size_t i = 0; i < demoDesks().size(); ++i) {
    const DemoDesk& row = demoDesks()[i];
    desk.run(row.code, row.name, history.balance(i), opened, row.house ? "OUI" : "NON", "OUI");
  }

  Inserter insert = filler.inserter("acce_caisse", {"id_caisse", "nom_caisse", "login", "nom_utilisateur",
                                                    "date_affectaion", "commentaire", "general"});
  for (const DemoAssignment& row : demoAssignments()) {
    const auto desks = demoDesks();
    const auto users = demoUsers();
    const auto assigned =
        std::find_if(desks.begin(), desks.end(), [&](const auto& d) { return d.code == row.desk; });
    const auto who =
        std::find_if(users.begin(), users.end(), [&](const auto& u) { return u.login == row.login; });
    insert.run(assigned->code, assigned->name, who->login, who->surname, opened, row.comment,
               assigned->house ? "OUI" : "NON");
  }
}

/// An order that waits on its table at this moment.
struct OpenOrder {
  std::string_view table;
  std::string_view login;
  int minutesAgo;
  std::vector<std::pair<std::string_view, int>> lines;  ///< Designation and quantity.
};

std::vector<OpenOrder> openOrders() {
  return {{"Salle 3",
           "32",
           25,
           {{"COUSCOUS POULET", 2}, {"SALADE VARIÉE", 1}, {"EAU MINÉRALE 1,5 L", 1}, {"THÉ À LA MENTHE", 2}}},
          {"Terrasse 5", "31", 8, {{"CAFÉ CRÈME", 2}, {"PART DE GÂTEAU", 1}}}};
}

void writeOpenOrder(Filler& filler, const OpenOrder& order, const DemoTable& table, std::int64_t number) {
  const DateTime date = earlier(Clock::now(), order.minutesAgo * kMinute);
  filler
      .inserter("commande", {"n_table", "table", "etat_commande", "login", "n_commande", "date_commande",
                             "en_caisser", "J", "M", "A"})
      .run(std::to_string(table.id), table.name, "Encours", order.login, number, date, "no", date.day(),
           date.month(), date.year());
  Inserter line =
      filler.inserter("relation_commande", {"n_commande", "code_article", "article", "qte", "prix", "total"});
  for (const auto& [designation, quantity] : order.lines) {
    const std::size_t article = articleNamed(designation);
    const int price = demoArticles()[article].price;
    line.run(number, articleCode(article), designation, quantity, static_cast<double>(price),
             static_cast<double>(price * quantity));
  }
}

void writeFloor(Filler& filler, const std::vector<OpenOrder>& orders, std::int64_t lastOrder) {
  Inserter place = filler.inserter("Endroit", {"ID_endroit", "Endoit"});
  int id = 0;
  for (const DemoPlace& row : demoPlaces()) place.run(++id, row.name);

  Inserter insert = filler.inserter(
      "Table_", {"ID_table", "table", "endroit", "id_endroit", "etat", "control", "n_commande"});
  for (const DemoTable& row : demoTables()) {
    const auto order =
        std::find_if(orders.begin(), orders.end(), [&](const auto& o) { return o.table == row.name; });
    const bool busy = order != orders.end();
    if (busy) writeOpenOrder(filler, *order, row, ++lastOrder);
    insert.run(row.id, row.name, row.placeName, row.placeId, busy ? "ON" : "OFF", "open",
               busy ? lastOrder : 0);
  }
}

DemoReport createCafeteria(const std::string& path, HistoryPlan plan, bool withPictures,
                           const std::vector<OpenOrder>& waiting, std::int64_t moreSuppliers = 0) {
  DemoReport report;
  const std::unique_ptr<Pictures> pictures = withPictures ? makePictures(report.withoutPictures) : nullptr;
  report.pictures = pictures != nullptr;
  plan.firstDay = earlier(Clock::today(), plan.days * kMillisecondsPerDay);
  createStore(path, schema::kStorePassword, [&](Filler& filler) {
    writeCatalogue(filler, pictures.get());
    writePeople(filler, pictures.get());
    writeMoreSuppliers(filler, moreSuppliers);
    History history(filler, plan);
    history.write();
    writeDesks(filler, history, plan.firstDay);
    writeFloor(filler, waiting, history.orders());
    report.orders = history.orders();
    report.lines = history.lines();
  });
  return report;
}

}  // namespace

DemoReport createDemo(const std::string& path) {
  HistoryPlan plan;
  plan.days = kDemoDays;
  plan.orders = kDemoOrders;
  plan.invoices = kDemoInvoices;
  plan.daysNotClosed = kDemoDaysNotClosed;
  plan.seed = kDemoSeed;
  return createCafeteria(path, plan, true, openOrders());
}

DemoReport createGenerated(const std::string& path, const Generation& generation) {
  HistoryPlan plan;
  plan.days = kGeneratedDays;
  plan.orders = generation.orders;
  plan.invoices = generation.invoices;
  plan.daysNotClosed = kGeneratedDaysNotClosed;
  plan.seed = generation.seed;
  return createCafeteria(path, plan, generation.pictures, {}, generation.suppliers);
}

}  // namespace tavoline::tool
