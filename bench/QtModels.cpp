#include "bench/QtModels.h"

#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>
#include <QtSql/QSqlQueryModel>
#include <QtSql/QSqlRecord>
#include <QtSql/QSqlTableModel>
#include <stdexcept>

namespace tavoline::bench {
namespace {

void check(bool done, const QSqlError& error) {
  if (!done) throw std::runtime_error(error.text().toStdString());
}

QString text(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

QSqlDatabase opened() {
  QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench"));
  database.setDatabaseName(QStringLiteral("BDD.mdb"));
  check(database.open(), database.lastError());
  QSqlQuery query(database);
  check(query.exec(QStringLiteral("pragma synchronous = full")), query.lastError());
  check(query.exec(QStringLiteral("pragma wal_autocheckpoint = 8000")), query.lastError());
  return database;
}

class Model : public QSqlTableModel {
 public:
  Model(const QSqlDatabase& database, const char* table) : QSqlTableModel(nullptr, database) {
    setEditStrategy(OnManualSubmit);
    setTable(QLatin1String(table));
  }

  void reselect() { check(select(), lastError()); }

  void refilter(const QString& condition) {
    setFilter(condition);
    reselect();
  }

  QVariant at(int row, const char* field) const { return record(row).value(QLatin1String(field)); }

  void write(int row, const char* field, const QVariant& value) {
    setData(index(row, fieldIndex(QLatin1String(field))), value);
  }

  void post() { check(submitAll(), lastError()); }

  /// The row whose field has this value, rows being fetched as far as it stands.
  int find(const char* field, const QVariant& value) {
    for (int row = 0;; ++row) {
      while (row >= rowCount() && canFetchMore()) fetchMore();
      if (row >= rowCount()) throw std::runtime_error(std::string("no row with this ") + field);
      if (at(row, field) == value) return row;
    }
  }
};

}  // namespace

struct QtModels::Models {
  QSqlDatabase database = opened();
  Model commande{database, "commande"};
  Model table{database, "Table_"};
  Model article{database, "article"};
  Model line{database, "relation_commande"};
  Model lines{database, "relation_commande"};
  QSqlQueryModel sum;
  QVariant order;
  qint64 shown = 0;

  void reselectSum(const QString& condition) {
    sum.setQuery(QStringLiteral("SELECT n_commande, Sum(total) AS SumOftotal FROM relation_commande WHERE ") +
                     condition + QStringLiteral(" GROUP BY n_commande"),
                 database);
    check(!sum.lastError().isValid(), sum.lastError());
  }
};

QtModels::QtModels() : models_(std::make_unique<Models>()) {
  Models& m = *models_;
  QSqlQuery newest(QStringLiteral("select max(n_commande) from commande"), m.database);
  newest.next();
  m.order = newest.value(0);
  m.article.setSort(m.article.fieldIndex(QStringLiteral("code_barre")), Qt::AscendingOrder);
  for (Model* model : {&m.commande, &m.table, &m.article, &m.line, &m.lines}) model->reselect();
}

QtModels::~QtModels() {
  models_.reset();
  QSqlDatabase::removeDatabase(QStringLiteral("bench"));
}

void QtModels::tap(const std::string& designation, const std::string& table) {
  Models& m = *models_;
  m.commande.reselect();
  const int current = m.commande.find("n_commande", m.order);
  m.table.reselect();
  m.article.reselect();

  m.article.refilter(QStringLiteral("designation_article='") + text(designation) + QLatin1Char('\''));
  const QString ofOrder =
      QStringLiteral("n_commande='") + m.commande.at(current, "n_commande").toString() + QLatin1Char('\'');
  m.lines.refilter(ofOrder);
  m.reselectSum(ofOrder);
  const QVariant code = m.article.at(0, "code_barre");
  m.line.refilter(ofOrder + QStringLiteral(" and code_article='") + code.toString() + QLatin1Char('\''));

  m.line.insertRow(0);
  m.line.write(0, "n_commande", m.order);
  m.line.write(0, "code_article", code);
  m.line.write(0, "article", m.article.at(0, "designation_article"));
  m.line.write(0, "qte", 1);
  m.line.write(0, "prix", m.article.at(0, "prix_vente"));
  m.line.write(0, "total", m.article.at(0, "prix_vente"));
  m.line.post();
  m.article.write(0, "qte_stock", m.article.at(0, "qte_stock").toInt() - 1);
  m.article.post();

  m.line.reselect();
  m.lines.reselect();
  m.reselectSum(ofOrder);
  m.table.refilter(QStringLiteral("\"table\"='") + text(table) + QLatin1Char('\''));
  m.table.write(0, "etat", QStringLiteral("ON"));
  m.table.write(0, "n_commande", m.order);
  m.table.post();
  m.table.refilter(QString());

  for (int row = 0; row < m.lines.rowCount(); ++row)
    for (const char* field : {"qte", "article", "prix", "total"})
      m.shown += m.lines.at(row, field).toString().size();
  m.shown += m.sum.record(0).value(QStringLiteral("SumOftotal")).toString().size();
}

}  // namespace tavoline::bench
