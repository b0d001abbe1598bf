#include "data/sql/Cafeteria.h"

#include <stdexcept>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/value/Text.h"
#include "tools/store/Schema.h"

namespace tavoline::test {
namespace {

// The orders come in the sequence 3, 4, 1, 2, 5, which is neither that of their numbers nor that of their
// dates. Order 4 is by a waiter who has left, and only order 1 names a client.
const char* const kRows = R"sql(
  insert into type (code, Type_Produit) values (1, 'Boissons'), (2, 'Plats'), (3, 'Glaces');
  insert into article (code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto) values
    ('1', 'Café', 1, 50, 120.0, 'OUI'), ('2', 'Thé', 1, 40, 80.0, 'OUI'), ('10', 'Pizza', 2, 0, 600.0, 'NON');
  insert into TVA (tva, utilisation) values (19.0, 'OUI');
  insert into Fournisseur (code_fournisseur, nom_fournisseur, adresse, n_telephone) values
    ('F1', 'Laiterie', 'Alger', '021'), ('f2', 'Épicerie', 'Oran', '041');
  insert into client (code_client, nom_client, Prenom_client, Telephone) values
    ('C1', 'Salah', 'Ali', '0550'), ('c2', 'Élodie', 'B', '0551');
  insert into utilisateur (login, mot_pase, nom, prenom, role) values
    ('0001', 'a', 'Amrani', 'Amina', 'Admin'), ('0002', 'b', 'Kaci', 'Karim', 'User');
  insert into operation (n_, code_utilisateur) values (1, '0001'), (2, '0002');
  insert into Endroit (ID_endroit, Endoit) values (1, 'Salle'), (4, 'Terrasse');
  insert into Table_ (ID_table, "table", id_endroit, etat, control, n_commande) values
    (1, 'T1', 1, 'OFF', 'open', 0), (7, 'l''été', 4, 'ON', 'close', 2);
  insert into commande (n_commande, "table", login, etat_commande, en_caisser, date_commande, J, M, A, tcc, id_caisse,
                        code_client, client) values
    (3, 'T1', '0001', 'Terminer', 'yes', '2024-04-30 09:00:00.000', 30, 4, 2024, 80.0, 'C001', null, null),
    (4, 'T1', '0009', 'Terminer', 'no', '2024-05-03 12:30:15.250', 3, 5, 2024, 600.0, 'C002', null, null),
    (1, 'T1', '0001', 'Terminer', 'no', '2024-05-01 10:00:00.000', 1, 5, 2024, 320.0, 'C001', 'C1', 'Salah'),
    (2, 'T7', '0002', 'Encours', 'no', '2024-05-02 11:00:00.000', 2, 5, 2024, null, 'C001', null, null),
    (5, 'T1', '0002', 'Terminer', 'no', '2024-05-01 23:59:59.000', 1, 5, 2024, 200.5, 'C0010', null, null);
  insert into relation_commande (n_commande, code_article, article, qte, prix, total) values
    (3, '2', 'Thé', 1, 80.0, 80.0), (4, '10', 'Pizza', 1, 600.0, 600.0), (1, '1', 'Café', 2, 120.0, 240.0),
    (1, '2', 'Thé', 1, 80.0, 80.0), (2, '1', 'Café', 1, 120.0, 120.0), (5, '1', 'Café', 1, 120.5, 120.5),
    (5, '2', 'Thé', 1, 80.0, 80.0);
  insert into facture_achat (N_facture, date_facture, code_fournisseur, nom_fournisseur, TCC, en_caisse) values
    (1, '2024-05-01 00:00:00.000', 'F1', 'Laiterie', 476.0, 'OUI'),
    (2, '2024-05-02 00:00:00.000', 'F9', 'Parti', 100.0, null);
  insert into Achat (n_facture, code_barre, article, qte_achat, prix_achat, TOTAL) values
    (1, '1', 'Café', 3, 100.0, 300.0), (1, '2', 'Thé', 2, 50.0, 100.0), (2, '1', 'Café', 1, 100.0, 100.0);
  insert into caisse (ID_caise, nom_caisse, solde, general, "select") values
    ('C001', 'Bar', 1000.0, 'NON', 'OUI'), ('C002', 'Terrasse', 50.25, 'NON', 'OUI'),
    ('C003', 'Maison', 9000.0, 'OUI', 'OUI');
  insert into acce_caisse (id_caisse, login, general) values
    ('C001', '0001', 'NON'), ('C002', '0001', 'NON'), ('C003', '0001', 'OUI'), ('C001', '0002', 'NON');
  insert into caise (n_caise, id_caisse, date_fin, J, M, A) values
    (2, 'C001', '2024-04-02 20:00:00.000', 2, 4, 2024), (1, 'C002', '2024-04-01 20:00:00.000', 1, 4, 2024),
    (3, 'Tous Ciasses', '2024-04-03 20:00:00.000', 3, 4, 2024);
  insert into depence (ID_depence, date_depense, montant_dep, id_caisse, J, M, A, en_caisser) values
    (1, '2024-05-01 15:00:00.000', 40.0, 'C001', 1, 5, 2024, 'NO'),
    (2, '2024-05-02 15:00:00.000', 10.5, 'C002', 2, 5, 2024, 'NO'),
    (3, '2024-05-02 16:00:00.000', 999.0, 'C003', 2, 5, 2024, null);
)sql";

Catalog makeCatalog() {
  std::vector<TableInfo> tables;
  for (const schema::Table& table : schema::tables()) {
    TableInfo info{std::string(table.name), {}};
    for (const schema::Column& column : table.columns)
      info.columns.push_back({std::string(column.name), column.type, column.width, {}});
    tables.push_back(std::move(info));
  }
  return Catalog(std::move(tables));
}

std::string_view textOf(sqlite3_value* value) {
  return {reinterpret_cast<const char*>(sqlite3_value_text(value)),
          static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void like(sqlite3_context* context, int, sqlite3_value** values) {
  if (sqlite3_value_type(values[0]) == SQLITE_NULL || sqlite3_value_type(values[1]) == SQLITE_NULL) return;
  sqlite3_result_int(context, matchesLike(textOf(values[1]), textOf(values[0])));
}

void bind(sqlite3_stmt* statement, int at, const Value& value) {
  if (value.isInteger()) {
    sqlite3_bind_int64(statement, at, value.toInteger());
  } else if (value.isFloat()) {
    sqlite3_bind_double(statement, at, value.toFloat());
  } else if (!value.isNull()) {
    const std::string text = value.isDateTime() ? value.toDateTime().stored() : value.text();
    sqlite3_bind_text(statement, at, text.c_str(), -1, SQLITE_TRANSIENT);
  }
}

Value columnValue(sqlite3_stmt* statement, int at, FieldType type) {
  switch (sqlite3_column_type(statement, at)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return Value(static_cast<std::int64_t>(sqlite3_column_int64(statement, at))).as(type);
    case SQLITE_FLOAT:
      return Value(sqlite3_column_double(statement, at)).as(type);
    default:
      break;
  }
  const std::string text = reinterpret_cast<const char*>(sqlite3_column_text(statement, at));
  if (type == FieldType::DateTime) return DateTime::fromStored(text).value();
  return Value(text).as(type);
}

}  // namespace

const Catalog& catalog() {
  static const Catalog all = makeCatalog();
  return all;
}

sql::Select select(std::string_view text, std::string_view filter) {
  const sql::Statement statement = sql::parseStatement(text);
  return sql::narrowed(sql::resolve(std::get<sql::Select>(statement), catalog()), sql::parseFilter(filter));
}

Cafeteria::Cafeteria() {
  sqlite3* opened = nullptr;
  sqlite3_open(":memory:", &opened);
  db_.reset(opened);
  sqlite3_create_function(opened, "tavoline_like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, like,
                          nullptr, nullptr);
  for (const std::string& definition : schema::sqliteDefinitions()) run(definition);
  run(kRows);
}

Cafeteria::Prepared Cafeteria::prepare(const std::string& text, const std::vector<Value>& values) const {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db_.get(), text.c_str(), -1, &statement, nullptr) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(db_.get()) + (": " + text));
  Prepared prepared(statement);
  if (sqlite3_bind_parameter_count(statement) != static_cast<int>(values.size()))
    throw std::runtime_error("placeholders and values differ in number: " + text);
  for (std::size_t i = 0; i < values.size(); ++i) bind(statement, static_cast<int>(i) + 1, values[i]);
  return prepared;
}

bool Cafeteria::step(sqlite3_stmt* statement) const {
  const int code = sqlite3_step(statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(db_.get()));
  return code == SQLITE_ROW;
}

std::vector<std::string> Cafeteria::rows(const sql::Select& select, const sql::Parameters& parameters) const {
  const sql::Written written = sql::write(select, parameters, sql::sqliteEngine());
  const Prepared statement = prepare(written.text, written.values);
  std::vector<std::string> lines;
  while (step(statement.get())) {
    std::string line;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
      if (i > 0) line += '|';
      line += columnValue(statement.get(), static_cast<int>(i), select.items[i].type).text();
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

void Cafeteria::run(const sql::Update& update, const sql::Parameters& parameters) const {
  const sql::Written written = sql::write(update, parameters, sql::sqliteEngine());
  step(prepare(written.text, written.values).get());
}

void Cafeteria::run(const std::string& engineText) const {
  if (sqlite3_exec(db_.get(), engineText.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(db_.get()));
}

std::vector<std::string> Cafeteria::plan(const sql::Select& select) const {
  const sql::Written written = sql::write(select, {}, sql::sqliteEngine());
  const Prepared statement = prepare("explain query plan " + written.text, written.values);
  std::vector<std::string> lines;
  while (step(statement.get()))
    lines.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 3)));
  return lines;
}

}  // namespace tavoline::test
