#include "fuzz/FuzzDialect.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/value/Errors.h"
#include "tools/store/Schema.h"

namespace tavoline::test {
namespace {

/// Every word that a writer may use outside of a quoted name.
constexpr std::array kWords = {
    "select", "from",   "where",     "group",  "order",   "by",           "having",    "limit",
    "as",     "and",    "or",        "not",    "is",      "null",         "in",        "between",
    "like",   "escape", "sum",       "count",  "min",     "max",          "symmetric", "cast",
    "double", "desc",   "precision", "nullif", "lower",   "nulls",        "first",     "last",
    "update", "set",    "true",      "false",  "collate", "tavoline_like"};

class Inspection {
 public:
  explicit Inspection(const sql::Written& written) : text_(written.text), values_(written.values.size()) {}

  void run() {
    while (at_ < text_.size()) step();
    if (highest_ != values_) fail("placeholders and values differ in number");
  }

 private:
  static bool isDigit(char c) { return c >= '0' && c <= '9'; }
  static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || c == '_'; }

  [[noreturn]] void fail(const char* what) const { throw std::logic_error(std::string(what) + ": " + text_); }

  void step() {
    const char c = text_[at_];
    if (c == '"') return name();
    if (c == '?' || c == '$') return placeholder();
    if (isLetter(c)) return word();
    constexpr std::string_view kSigns = " .,()=<>+-*/";
    if (kSigns.find(c) == std::string_view::npos) fail("a sign that no writer writes");
    ++at_;
  }

  void name() {
    do {
      at_ = text_.find('"', at_ + 1);
      if (at_ == std::string::npos) fail("a name without end");
      ++at_;
    } while (at_ < text_.size() && text_[at_] == '"');
  }

  void placeholder() {
    std::size_t number = 0;
    while (++at_ < text_.size() && isDigit(text_[at_]))
      number = number * 10 + static_cast<std::size_t>(text_[at_] - '0');
    highest_ = std::max(highest_, number);
  }

  void word() {
    const std::size_t start = at_;
    while (at_ < text_.size() && isLetter(text_[at_])) ++at_;
    const std::string_view word = std::string_view(text_).substr(start, at_ - start);
    if (std::find(kWords.begin(), kWords.end(), word) == kWords.end()) fail("a word that no writer writes");
    if (word == "limit") skip(" 1");
    if (word == "escape") skip(" ''");
  }

  void skip(std::string_view expected) {
    if (text_.compare(at_, expected.size(), expected) != 0) fail("a value in the text");
    at_ += expected.size();
  }

  const std::string text_;
  const std::size_t values_;
  std::size_t at_ = 0, highest_ = 0;
};

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
sql::Parameters parametersFor(const sql::Statement& statement) {
  const std::array<Value, 5> kinds = {Value("12"), DateTime::of(2024, 5, 1), Value(3), Value(),
                                      Value("C00%")};
  sql::Parameters parameters;
  std::size_t next = 0;
  for (const std::string& name : sql::parametersOf(statement))
    parameters[name] = kinds[next++ % kinds.size()];
  return parameters;
}

template <class T>
void writeBoth(const T& resolved, const sql::Parameters& parameters) {
  for (const sql::Engine* engine : {&sql::sqliteEngine(), &sql::postgresEngine()})
    Inspection(sql::write(resolved, parameters, *engine)).run();
}

void run(std::string_view text, std::string_view filterText) {
  const sql::Statement statement = sql::parseStatement(text);
  const sql::Parameters parameters = parametersFor(statement);
  if (const auto* update = std::get_if<sql::Update>(&statement))
    return writeBoth(sql::resolve(*update, catalog()), parameters);

  const sql::Select select = sql::resolve(std::get<sql::Select>(statement), catalog());
  writeBoth(select, parameters);
  const sql::ExprPtr filter = sql::parseFilter(filterText);
  writeBoth(sql::narrowed(select, filter), parameters);
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
