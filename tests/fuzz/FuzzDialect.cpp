#include "fuzz/FuzzDialect.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <stdexcept>
#include <string>

#include "data/schema/Schema.h"
#include "data/sql/Lexer.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Errors.h"

namespace tavoline::test {
namespace {

/// Every word that a writer may use outside of a quoted name.
const std::set<std::string, std::less<>> kWords = {
    "select", "from",   "where",     "group",  "order",   "by",           "having",    "limit",
    "as",     "and",    "or",        "not",    "is",      "null",         "in",        "between",
    "like",   "escape", "sum",       "count",  "min",     "max",          "symmetric", "cast",
    "double", "desc",   "precision", "nullif", "lower",   "nulls",        "first",     "last",
    "update", "set",    "true",      "false",  "collate", "tavoline_like"};

void inspect(const sql::Written& written) {
  const std::string& text = written.text;
  const auto fail = [&](const char* what) { throw std::logic_error(std::string(what) + ": " + text); };
  const auto behind = [&](const char* signs, std::size_t at) {
    return std::min(text.find_first_not_of(signs, at), text.size());
  };
  std::size_t highest = 0;
  for (std::size_t at = 0, next = 0; at < text.size(); at = next) {
    next = at + 1;
    if (text[at] == '"') {  // doubled within a name, it ends one and begins another
      next = text.find('"', next) + 1;
      if (next == 0) fail("a name without end");
    } else if (text[at] == '?' || text[at] == '$') {
      next = behind("0123456789", next);
      highest = std::max(highest, std::stoul(text.substr(at + 1, next - at - 1)));
    } else if (std::strchr(" .,()=<>+*-/", text[at]) == nullptr) {
      next = behind("abcdefghijklmnopqrstuvwxyz_", at);
      const std::string word = text.substr(at, next - at);
      if (!kWords.contains(word)) fail("a word or a sign that no writer writes");
      const std::string value = word == "limit" ? " 1" : word == "escape" ? " ''" : "";
      if (text.compare(next, value.size(), value) != 0) fail("a value in the text");
      next += value.size();
    }
  }
  if (highest != written.values.size()) fail("placeholders and values differ in number");
}

/// The tables of a store, as its schema has them.
const Catalog& catalog() {
  static const Catalog all = [] {
    std::vector<TableInfo> tables;
    for (const schema::Table& table : schema::tables()) {
      tables.push_back({std::string(table.name), {}});
      for (const schema::Column& column : table.columns)
        tables.back().columns.push_back({std::string(column.name), column.type, column.width, {}});
    }
    return Catalog(std::move(tables));
  }();
  return all;
}

/// Parameters that convert to some types and not to others.
sql::Parameters parametersFor(std::string_view text) {
  const std::array<Value, 5> kinds = {Value("12"), DateTime::of(2024, 5, 1), Value(3), Value(),
                                      Value("C00%")};
  sql::Parameters parameters;
  std::size_t next = 0;
  for (const std::string& name : sql::parametersIn(text)) parameters[name] = kinds[next++ % kinds.size()];
  return parameters;
}

template <class T>
void write(const T& resolved, const sql::Parameters& parameters) {
  inspect(sql::write(resolved, parameters, sqlite::engine()));
}

void run(std::string_view text, std::string_view filterText) {
  const sql::Statement statement = sql::parseStatement(text);
  const sql::Parameters parameters = parametersFor(text);
  if (const auto* update = std::get_if<sql::Update>(&statement))
    return write(sql::resolve(*update, catalog()), parameters);

  const sql::Select select = sql::resolve(std::get<sql::Select>(statement), catalog());
  write(select, parameters);
  const sql::ExprPtr filter = sql::parseFilter(filterText);
  write(sql::narrowed(select, filter), parameters);
  sql::holds(sql::resolveFilter(filter, select.items), select.items, std::vector<Value>(select.items.size()));
}

}  // namespace

void fuzzDialect(std::string_view input) {
  constexpr std::string_view kBorder = "\n--\n";
  const std::size_t border = std::min(input.find(kBorder), input.size());
  const std::string_view filter = input.substr(std::min(border + kBorder.size(), input.size()));
  try {
    run(input.substr(0, border), filter);
  } catch (const Error&) {  // a sentence for the user, as it should be
  } catch (const std::logic_error&) {
    throw;
  } catch (const std::exception& error) {
    throw std::logic_error(std::string("not one of the system's errors: ") + error.what());
  }
}

}  // namespace tavoline::test
