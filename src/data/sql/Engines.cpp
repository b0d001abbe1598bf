#include "data/sql/Writer.h"

namespace tavoline::sql {
namespace {

std::string inDoubleQuotes(const std::string& name) {
  std::string result = "\"";
  for (const char c : name) {
    if (c == '"') result += c;
    result += c;
  }
  return result + '"';
}

class Sqlite : public Engine {
 public:
  std::string quotedName(const std::string& name) const override { return inDoubleQuotes(name); }
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
};

class Postgres : public Engine {
 public:
  std::string quotedName(const std::string& name) const override { return inDoubleQuotes(name); }
  std::string placeholder(std::size_t number) const override { return "$" + std::to_string(number); }
  std::string between(const std::string& x, const std::string& a, const std::string& b) const override {
    return x + " between symmetric " + a + " and " + b;
  }
  std::string like(const std::string& x, const std::string& pattern) const override {
    return "lower(" + x + ") like lower(" + pattern + ") escape ''";
  }
  std::string orderKey(const std::string& column, FieldType type) const override {
    return type == FieldType::Text ? column + " collate \"C\"" : column;
  }
  std::string orderTerm(const std::string& key, bool descending) const override {
    return descending ? key + " desc nulls last" : key + " nulls first";
  }
};

}  // namespace

const Engine& sqliteEngine() {
  static const Sqlite engine;
  return engine;
}

const Engine& postgresEngine() {
  static const Postgres engine;
  return engine;
}

}  // namespace tavoline::sql
