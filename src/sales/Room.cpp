#include "sales/Room.h"

#include "data/value/Clock.h"
#include "data/value/Errors.h"

namespace tavoline {

namespace {

constexpr const char* kOpenOrders =
    "SELECT commande.n_commande, commande.date_commande, commande.login, Sum(relation_commande.total) AS "
    "total FROM (Table_ INNER JOIN commande ON Table_.n_commande = commande.n_commande) INNER JOIN "
    "relation_commande ON commande.n_commande = relation_commande.n_commande WHERE Table_.etat='ON' "
    "GROUP BY commande.n_commande, commande.date_commande, commande.login";
constexpr const char* kWaiters = "SELECT utilisateur.login, utilisateur.prenom FROM utilisateur";

}  // namespace

void Room::read(Store& store) {
  try {
    readOrders(store);
  } catch (const Error&) {
    orders_.clear();
  }
}

// The names are read anew only for a waiter who is not known here yet.
void Room::readOrders(Store& store) {
  orders_.clear();
  bool stranger = false;
  for (auto& row : readRows(store, kOpenOrders)) {
    if (!row[0].isInteger()) continue;
    Order& order = orders_[row[0].toInteger()];
    order = {row[3], row[1], row[2].text()};
    stranger = stranger || !names_.contains(order.login);
  }
  if (stranger) readNames(store);
}

void Room::readNames(Store& store) {
  for (const auto& row : readRows(store, kWaiters))
    names_[row[0].text()] = QString::fromStdString(row[1].text()).trimmed();
}

QStringList Room::of(const Value& order) const {
  const auto found = order.isInteger() ? orders_.find(order.toInteger()) : orders_.end();
  if (found == orders_.end()) return {};
  const auto& [total, since, login] = found->second;
  const auto name = names_.find(login);
  QStringList lines{QString::fromStdString(total.text()) + QStringLiteral(" DA")};
  if (since.isDateTime()) lines << duration(since.toDateTime(), Clock::now());
  lines << (name == names_.end() || name->second.isEmpty() ? QString::fromStdString(login) : name->second);
  return lines;
}

QString duration(const DateTime& since, const DateTime& now) {
  constexpr std::int64_t kDay = 24LL * 60;  // minutes
  const std::int64_t minutes = (now.millis() - since.millis()) / 60000;
  if (minutes < 0) return {};
  if (minutes < 60) return QStringLiteral("%1 min").arg(minutes);
  if (minutes < kDay)
    return QStringLiteral("%1 h %2").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0'));
  return QStringLiteral("%1 j").arg(minutes / kDay);
}

}  // namespace tavoline
