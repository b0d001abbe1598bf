#include "tools/store/Creation.h"

#include <memory>

#include "data/schema/Schema.h"
#include "data/store/Definitions.h"
#include "data/store/Writes.h"
#include "data/store/sqlite/Connection.h"
#include "data/store/sqlite/Engine.h"
#include "data/store/sqlite/Lineage.h"
#include "data/value/Errors.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

class SqliteFiller : public Filler {
 public:
  explicit SqliteFiller(sqlite::Connection& connection) : connection_(connection) {}

  Inserter inserter(std::string_view table, const std::vector<std::string_view>& columns) override {
    auto statement = std::make_shared<sqlite::Statement>(
        connection_.prepare(insertionText(table, columns, sqlite::engine())));
    return Inserter([statement](std::span<const Value> row) {
      statement->bind(row);
      while (statement->step()) {
      }
    });
  }

  void numberBehind(std::string_view table, std::int64_t last) override {
    for (const char* text :
         {"INSERT INTO sqlite_sequence (name, seq) SELECT ?1, 0 WHERE NOT EXISTS (SELECT 1 FROM "
          "sqlite_sequence WHERE name = ?1 AND ?2 > 0)",
          "UPDATE sqlite_sequence SET seq = max(seq, ?2) WHERE name = ?1"}) {
      sqlite::Statement statement = connection_.prepare(text);
      statement.bind({table, last});
      while (statement.step()) {
      }
    }
  }

  void readBack(std::string_view table, const std::vector<std::string_view>& columns,
                const Reading& read) override {
    std::string names;
    std::vector<FieldType> types;
    for (const std::string_view column : columns) {
      names += (names.empty() ? "" : ", ") + sqlite::engine().quotedName(column);
      types.push_back(typeOfColumn(table, column));
    }
    sqlite::Statement rows =
        connection_.prepare("SELECT " + names + " FROM " + sqlite::engine().quotedName(table) + " ORDER BY " +
                            std::string(schema::kRowNumber));
    std::vector<Value> row(columns.size());
    while (rows.step()) {
      for (std::size_t i = 0; i < row.size(); ++i) row[i] = rows.value(static_cast<int>(i), types[i]);
      read(row);
    }
  }

 private:
  sqlite::Connection& connection_;
};

}  // namespace

FieldType typeOfColumn(std::string_view table, std::string_view column) {
  const schema::Column* const found = schema::table(table).find(column);
  return found ? found->type : FieldType::Integer;
}

void createStore(const std::string& path, std::string_view password, const Filling& fill,
                 const Access& access) {
  if (const auto address = serverAddress(path)) return createOnServer(*address, password, fill);
  publishFile(
      path,
      [&](const std::string& temporary) {
        sqlite::Connection connection(temporary, path, sqlite::Connection::Role::Maker);
        // Nobody sees the file before it has its name, so it needs neither a journal nor a write in order.
        for (const char* pragma : {"journal_mode = OFF", "synchronous = OFF", "locking_mode = EXCLUSIVE",
                                   "cache_size = -65536", "encoding = 'UTF-8'"})
          connection.execute("PRAGMA " + std::string(pragma));
        connection.execute("PRAGMA application_id = " + std::to_string(schema::kApplicationId));
        connection.execute("BEGIN");
        for (const Definition& table : tableDefinitions(sqlite::engine())) connection.execute(table.text);
        for (const std::string& row : recordStatements(sqlite::engine(), password)) connection.execute(row);
        SqliteFiller filler(connection);
        if (fill) fill(filler);
        for (const Definition& one : auxiliaryDefinitions(sqlite::engine())) connection.execute(one.text);
        sqlite::giveIdentity(connection);
        connection.execute("COMMIT");
        connection.execute("PRAGMA locking_mode = NORMAL");
        if (connection.text("PRAGMA journal_mode = WAL") != "wal")
          throw StoreError(
              "Ce dossier ne permet pas le journal partagé dont la base a besoin. Choisissez un disque "
              "local.");
        connection.close();
      },
      access);
}

}  // namespace tavoline::tool
