#include "data/store/sqlite/Engine.h"

namespace tavoline::sqlite {
namespace {

class SqliteEngine : public Engine {
 public:
  std::string quotedName(std::string_view name) const override {
    std::string result = "\"";
    for (const char c : name) {
      if (c == '"') result += c;
      result += c;
    }
    return result + '"';
  }
  std::string placeholder(std::size_t number) const override { return "?" + std::to_string(number); }
  std::string between(const std::string& x, const std::string& a, const std::string& b) const override {
    return x + " between min(" + a + ", " + b + ") and max(" + a + ", " + b + ")";
  }
  std::string like(const std::string& x, const std::string& pattern) const override {
    return "tavoline_like(" + pattern + ", " + x + ")";
  }
  std::string orderKey(const std::string& column, FieldType) const override { return column; }
  std::string orderTerm(const std::string& key, bool descending) const override {
    return descending ? key + " desc" : key;
  }

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
};

}  // namespace

const Engine& engine() {
  static const SqliteEngine only;
  return only;
}

}  // namespace tavoline::sqlite
