#include "tools/store/demo/History.h"

#include <algorithm>
#include <cmath>

namespace tavoline::tool {
namespace {

constexpr double kFloat = 5000;  // DA left in a desk overnight.
constexpr std::int64_t kSecond = 1000;
constexpr std::array kDiscounts = {5, 10, 10, 15, 20};           // Percent.
constexpr std::array kWeek = {120, 100, 95, 100, 105, 125, 70};  // Percent, from Saturday on.
constexpr std::string_view kManager = "20";

DateTime at(DateTime day, int hour, int minute = 0) {
  return DateTime::fromMillis(day.millis() + (hour * 60 + minute) * kMinute);
}

/// To the hundredth of a DA: long sums keep the digits that a person would have counted.
double counted(double amount) {
  return std::round(amount * 100) / 100;
}

int weekday(DateTime day) {
  return static_cast<int>(day.millis() / kMillisecondsPerDay % 7);
}

std::string_view surname(std::string_view login) {
  const auto users = demoUsers();
  return std::find_if(users.begin(), users.end(), [&](const DemoUser& u) { return u.login == login; })
      ->surname;
}

}  // namespace

struct History::ExpenseRow {
  DateTime date;
  std::string_view type;
  double amount;
  std::string_view mark = "NO";  // What `en_caisser` holds; empty on a loss.
  std::string invoice = {};
  std::string_view user = {};
  const DemoSupplier* supplier = nullptr;
};

/// What became of a purchase invoice: the mark of its box, and what was paid of it so far.
struct History::Payment {
  std::string_view mark;  // empty where the box was never clicked
  double amount;
};

History::History(Filler& filler, const HistoryPlan& plan)
    : plan_(plan),
      random_(plan.seed),
      purchases_(plan.seed + 1),
      tables_(demoTables()),
      insertOrder_(filler.inserter("commande", {"n_table", "table", "remise", "remi", "etat_commande", "HT",
                                                "TVA", "tcc", "login", "n_commande", "code_client", "client",
                                                "date_commande", "id_caisse", "en_caisser", "J", "M", "A"})),
      insertLine_(filler.inserter("relation_commande",
                                  {"n_commande", "code_article", "article", "qte", "prix", "total"})),
      insertExpense_(filler.inserter(
          "depence",
          {"ID_depence", "date_depense", "type_depnce", "montant_dep", "login", "n_fac", "id_utilisateur",
           "nom_uilisateur", "id_caisse", "J", "M", "A", "code_fournisseur", "fournissur", "en_caisser"})),
      insertInvoice_(filler.inserter(
          "facture_achat",
          {"N_facture", "date_facture", "code_fournisseur", "nom_fournisseur", "HT", "TVA", "TCC", "login",
           "en_caisse", "MONTANT_VERSE", "MONTANT_RESTE", "id_caisse", "J", "M", "A"})),
      insertPurchase_(filler.inserter(
          "Achat", {"n_facture", "code_barre", "article", "qte_achat", "prix_achat", "TOTAL"})),
      insertClosing_(filler.inserter(
          "caise", {"n_caise", "date_lancement", "login", "date_debut", "date_fin", "total_caise",
                    "prelevement_caise", "ecat_caise", "justification", "id_caisse", "fond_caisse",
                    "total_recettes", "solde_caisse", "J", "M", "A", "total_depense"})) {
  for (std::size_t i = 0; i < desks_.size(); ++i)
    desks_[i] = {
        std::string(demoDesks()[i].code), demoDesks()[i].house, demoDesks()[i].house ? 0 : kFloat, 0, {}};
}

void History::write() {
  std::int64_t weight = 0;
  for (int day = 0; day < plan_.days; ++day)
    weight += kWeek[static_cast<std::size_t>(
        weekday(DateTime::fromMillis(plan_.firstDay.millis() + day * kMillisecondsPerDay)))];

  std::int64_t reached = 0;
  for (int i = 0; i < plan_.days; ++i) {
    const DateTime day = DateTime::fromMillis(plan_.firstDay.millis() + i * kMillisecondsPerDay);
    reached += kWeek[static_cast<std::size_t>(weekday(day))];
    liveDay(day, plan_.orders * reached / weight - order_, plan_.invoices * (i + 1) / plan_.days - invoice_,
            i < plan_.days - plan_.daysNotClosed);
  }
}

void History::liveDay(DateTime day, std::int64_t orders, std::int64_t invoices, bool closed) {
  std::vector<std::int64_t> ends;
  ends.reserve(static_cast<std::size_t>(orders));
  for (std::int64_t i = 0; i < orders; ++i)
    ends.push_back(day.millis() + minuteOfRush(random_) * kMinute + random_.below(60) * kSecond);
  std::sort(ends.begin(), ends.end());
  for (std::int64_t end : ends) writeOrder(DateTime::fromMillis(end), closed);

  for (; invoices > 0; --invoices) receiveDelivery(day);
  if (orders == 0) return;  // Screens allow an expense only while a finished order waits for its closing.
  const std::int64_t index = (day.millis() - plan_.firstDay.millis()) / kMillisecondsPerDay;
  spend(day, index);
  if (!closed) return;
  for (std::size_t i = 0; i < desks_.size(); ++i)
    if (desks_[i].firstOrder) closeDesk(desks_[i], at(day, 23, 10 + 10 * static_cast<int>(i)));
  openExpenses_.clear();
}

void History::writeOrder(DateTime date, bool closed) {
  const DemoTable& table = random_.of(tables_);
  Desk& desk = table.desk == desks_[0].code ? desks_[0] : desks_[1];
  const bool evening = date.hour() >= 17;
  const std::string_view login = &desk == &desks_[0] ? (evening ? kManager : "32") : (evening ? "32" : "31");

  ++order_;
  double ht = 0;
  for (const OrderLine& line : menu_.order(random_, date.hour())) {
    const DemoArticle& article = demoArticles()[line.article];
    insertLine_.run(order_, articleCode(line.article), article.designation, line.quantity,
                    static_cast<double>(article.price), static_cast<double>(line.total()));
    ht += line.total();
    ++lines_;
  }
  const double discount = random_.chance(6) ? random_.of(kDiscounts) : 0;
  const double reduction = discount * ht / 100;
  const double vat = ht * kVatRate / 100;
  const double total = ht + vat - reduction;
  const DemoClient* client = random_.chance(2) ? &random_.of(demoClients()) : nullptr;
  insertOrder_.run(std::to_string(table.id), table.name, discount, reduction, "Terminer", ht, vat, total,
                   login, order_, client ? client->code : std::string_view(),
                   client ? client->surname : std::string_view(), date, desk.code, closed ? "yes" : "no",
                   date.day(), date.month(), date.year());

  desk.balance = counted(desk.balance + total);
  desk.receipts = counted(desk.receipts + total);
  if (!desk.firstOrder) desk.firstOrder = date;
}

void History::spend(DateTime day, std::int64_t index) {
  Desk& hall = desks_[0];
  Desk& terrace = desks_[1];
  const auto invoice = [&] { return "FA" + std::to_string(1000 + random_.below(9000)); };
  if (random_.chance(40))
    writeExpense({at(day, 9, random_.below(60)), "Autres", 50.0 * random_.between(4, 24)}, hall);
  if (random_.chance(25))
    writeExpense(
        {at(day, 11, random_.below(60)), "Payer une charge", 100.0 * random_.between(5, 30), "NO", invoice()},
        random_.chance(50) ? hall : terrace);
  if (index % 8 == 4)
    writeExpense({at(day, 15, random_.below(60)),
                  "Dépense personnelle",
                  500.0 * random_.between(1, 4),
                  "NO",
                  {},
                  random_.chance(50) ? "31" : "32"},
                 terrace);
  if (index % 9 == 3)
    writeExpense({at(day, 16, random_.below(60)),
                  "Payer une Facture D'achat",
                  250.0 * random_.between(4, 14),
                  "NO",
                  invoice(),
                  {},
                  &random_.of(demoSuppliers())},
                 hall);
  if (day.day() == 5)
    writeExpense({at(day, 17, random_.below(60)), "Payer une charge", 45000, "NO", invoice()}, desks_[2]);
}

void History::writeExpense(const ExpenseRow& row, Desk& desk) {
  const bool loss = row.mark.empty();
  if (!loss && row.amount > desk.balance) return;
  ++expense_;
  insertExpense_.run(expense_, row.date, row.type, row.amount, kManager, row.invoice, row.user,
                     row.user.empty() ? std::string_view() : surname(row.user), desk.code, row.date.day(),
                     row.date.month(), row.date.year(),
                     row.supplier ? row.supplier->code : std::string_view(),
                     row.supplier ? row.supplier->name : std::string_view(), row.mark);
  if (!loss) desk.balance = counted(desk.balance - row.amount);
  if (!desk.house) openExpenses_.push_back({row.date, row.amount});
}

// Of those that can be paid, some are paid in part and some not at all.
History::Payment History::pay(double total) {
  const int way = purchases_.below(6), state = purchases_.below(5);
  const double paid = state < 2 ? total : state < 4 ? 100 * std::floor(total / 250) : 0;
  if (way == 0) return {"NON", 0};
  if (way < 3) return {{}, paid};
  Desk& hall = desks_[0];
  const double affordable = std::max(0.0, 100 * std::floor((hall.balance - kFloat) / 200));
  const double amount = std::min(paid, affordable);
  hall.balance = counted(hall.balance - amount);
  return {"OUI", amount};
}

void History::receiveDelivery(DateTime day) {
  struct Round {
    std::size_t supplier;
    int category, pack;
  };
  constexpr std::array kRounds = {Round{0, 2, 12}, Round{3, 4, 10}, Round{5, 2, 24},
                                  Round{4, 10, 6}, Round{8, 2, 6},  Round{10, 4, 8}};
  const Round& round = kRounds[static_cast<std::size_t>(invoice_) % kRounds.size()];
  const DemoSupplier& supplier = demoSuppliers()[round.supplier];

  ++invoice_;
  double ht = 0;
  for (std::size_t i = 0; i < demoArticles().size(); ++i) {
    const DemoArticle& article = demoArticles()[i];
    if (article.category != round.category || !article.counted()) continue;
    if (ht > 0 && purchases_.chance(25)) continue;
    const int quantity = round.pack * purchases_.between(1, 5);
    const double total = static_cast<double>(quantity) * article.purchasePrice;
    insertPurchase_.run(invoice_, articleCode(i), article.designation, quantity,
                        static_cast<double>(article.purchasePrice), total);
    ht += total;
  }
  const double vat = counted(ht * kVatRate / 100);
  const double total = counted(ht + vat);
  const Payment payment = pay(total);
  insertInvoice_.run(invoice_, day, supplier.code, supplier.name, ht, vat, total, kManager, payment.mark,
                     payment.amount, counted(total - payment.amount), desks_[0].code, day.day(), day.month(),
                     day.year());
}

// The counted amount is the book balance but for a slip of the hand now and then; thousands go to the house
// desk.
void History::closeDesk(Desk& desk, DateTime now) {
  DateTime begin = *desk.firstOrder;
  for (const Desk& other : desks_)
    if (other.firstOrder) begin = std::min(begin, *other.firstOrder);
  double expenses = 0;
  for (const Expense& expense : openExpenses_)
    if (expense.date >= begin && expense.date <= now) expenses += expense.amount;

  ++closing_;
  double difference = 0;
  if (closing_ % 17 == 9) difference = -50.0 * random_.between(1, 4);
  if (closing_ % 31 == 20) difference = 50;
  const double book = desk.balance;
  const double found = book + difference;
  const double taken = found > kFloat ? 1000 * std::floor((found - kFloat) / 1000) : 0;
  const double left = counted(found - taken);
  insertClosing_.run(closing_, now, kManager, begin, now, found, taken, difference,
                     difference < 0 ? "Erreur de rendu" : std::string_view(), desk.code, left, desk.receipts,
                     book, now.day(), now.month(), now.year(), expenses);
  desk.balance = left;
  desk.receipts = 0;
  desk.firstOrder.reset();
  desks_.back().balance += taken;
  if (difference < 0)
    writeExpense({DateTime::fromMillis(now.millis() + kMinute), "Perte", -difference, {}}, desk);
}

}  // namespace tavoline::tool
