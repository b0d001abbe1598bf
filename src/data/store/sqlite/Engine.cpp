#include "data/store/sqlite/Engine.h"

#include "data/schema/Identity.h"

namespace tavoline::sqlite {
namespace {

class SqliteEngine : public Engine {
 public:
  std::string placeholder(std::size_t number) const override { return "?" + std::to_string(number); }
  std::string between(const std::string& x, const std::string& a, const std::string& b) const override {
    return x + " between min(" + a + ", " + b + ") and max(" + a + ", " + b + ")";
  }
  std::string like(const std::string& x, const std::string& pattern) const override {
    return "tavoline_like(" + pattern + ", " + x + ")";
  }
  std::string orderKey(const std::string& column, FieldType) const override { return column; }
  std::string orderTerm(const std::string& key, bool descending, bool /*present*/) const override {
    return descending ? key + " desc" : key;
  }
  std::string sum(const std::string& x, FieldType /*type*/) const override { return "sum(" + x + ')'; }

  std::string rowNumberType() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string typeName(const schema::Column& column) const override {
    switch (column.type) {
      case FieldType::Text:
        return column.width ? "TEXT(" + std::to_string(column.width) + ")" : "TEXT";
      case FieldType::Integer:
        return "INTEGER";
      case FieldType::Float:
        return "REAL";
      case FieldType::DateTime:
        return "DATETIME";
      case FieldType::Blob:
        return "BLOB";
    }
    return {};
  }
  std::string indexTerm(std::string_view column) const override { return quotedName(column); }
  std::vector<Definition> counting() const override {
    std::vector<Definition> all;
    all.push_back({Definition::Kind::Table, std::string(schema::kCountTable),
                   "CREATE TABLE " + quotedName(schema::kCountTable) +
                       " (nom TEXT PRIMARY KEY, nombre INTEGER NOT NULL) WITHOUT ROWID"});
    for (const schema::Table& table : schema::tables())
      for (const std::string write : {"insert", "update", "delete"})
        all.push_back(countTrigger(table, write));
    return all;
  }

 private:
  Definition countTrigger(const schema::Table& table, const std::string& write) const {
    const std::string name = "ecriture_" + std::string(table.name) + '_' + write;
    return {Definition::Kind::Trigger, name,
            "CREATE TRIGGER " + quotedName(name) + " AFTER " + write + " ON " + quotedName(table.name) +
                " BEGIN INSERT INTO " + quotedName(schema::kCountTable) + " (nom, nombre) VALUES ('" +
                std::string(table.name) + "', 1) ON CONFLICT (nom) DO UPDATE SET nombre = nombre + 1; END"};
  }
};

}  // namespace

const Engine& engine() {
  static const SqliteEngine only;
  return only;
}

}  // namespace tavoline::sqlite
