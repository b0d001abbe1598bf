// Statements and filters of the dialect on a small cafeteria, told in text files. A step is one of these:
//
//     select ..., update ...     runs it; a select says its rows, what fails its sentence
//     DATASET COLUMN...          the statement of a dataset; of its columns those told, or all
//     filter TEXT                the last select narrowed by it, in the store and, which has to be the same,
//     in memory where CONDITION            the same, by any condition of a statement among TABLE RID...,
//     beside TABLE RID..., above TABLE RID
//                                the same, by row numbers: these, all but these, those above; in the store
//                                alone
//     limit N, newest TABLE      the last select cut to so many rows, its newest rows first
//     :NAME TEXT                 sets a parameter, or with no text clears it
//     written                    the last one as each engine gets it, behind its select list, and its values
//     columns                    of the last one, with their types, then its tables
//     parameters STATEMENT       the names of its parameters
//     walks DATASET FILTER       the tables that the engine goes through row by row
//     empty                      deletes all rows

#include <fstream>
#include <iterator>
#include <map>

#include "data/DMU.h"
#include "data/sql/Lexer.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "support/Literals.h"
#include "support/StoreFile.h"
#include "support/Transcript.h"
#include "tools/store/Sqlite.h"

namespace tavoline::test {
namespace {

class Dialect {
 public:
  explicit Dialect(Transcript& script) : script_(script) {
    std::ifstream in(TAVOLINE_FOLDER "cafeteria.sql");
    side_.execute({std::istreambuf_iterator<char>(in), {}});
    store_ = file_.open();
    dm_ = std::make_unique<TDM>(store_);
  }

  void perform(std::string step) {
    const std::string whole = step, verb = takeWord(step);
    if (const Dataset* dataset = dm_->Find(verb)) return run(dataset->SQL(), words(step));
    if (verb[0] == ':') return set(verb.substr(1), step);
    if (verb == "filter") return filter(sql::parseFilter(step));
    if (verb == "where")
      return filter(std::get<sql::Select>(sql::parseStatement("select * from x where " + step)).where);
    if (verb == "among" || verb == "beside" || verb == "above") return byNumber(verb, step);
    if (verb == "limit") return void(select_.limit = std::stoi(step));
    if (verb == "newest") return void(select_.orderBy = {{sql::rid(step), true}});
    if (verb == "parameters") return parameters(step);
    if (verb == "written") return written();
    if (verb == "columns") return columns();
    if (verb == "walks") return walks(step);
    if (verb == "empty") return empty();
    run(whole, {});
  }

 private:
  void run(const std::string& text, const std::vector<std::string>& shown) {
    const sql::Statement statement = sql::parseStatement(text);
    if (const auto* update = std::get_if<sql::Update>(&statement))
      return store_->execute(sql::resolve(*update, *store_->catalog()), parameters_);
    select_ = narrowed_ = sql::resolve(std::get<sql::Select>(statement), *store_->catalog());
    tell(select_, shown);
  }

  void set(const std::string& name, const std::string& text) {
    parameters_[name] = text.empty() ? Value() : Value(text);
  }

  std::vector<std::vector<Value>> rowsOf(const sql::Select& select) const {
    std::vector<std::vector<Value>> all;
    const auto rows = store_->snapshot()->query(select, parameters_);
    while (rows->next())
      for (std::size_t i = (all.emplace_back(), 0); i < select.items.size(); ++i)
        all.back().push_back(rows->value(i));
    return all;
  }

  void tell(sql::Select select, const std::vector<std::string>& shown) {
    if (!shown.empty()) {
      std::vector<sql::Item> items;
      for (const std::string& column : shown)
        for (const sql::Item& item : select.items)
          if (item.name == column) items.push_back(item);
      select.items = items;
    }
    const auto rows = rowsOf(select);
    if (rows.empty()) script_.say("(none)");
    for (const auto& row : rows) script_.say(row.size() == 1 && row[0].isNull() ? "null" : joined(row));
  }

  void byNumber(const std::string& verb, std::string rest) {
    const sql::ExprPtr rid = sql::rid(takeWord(rest));
    std::vector<Value> numbers;
    for (const std::string& word : words(rest)) numbers.push_back(valueOf(word));
    sql::Select narrowed = select_;
    narrowed.where = conjunction(
        narrowed.where, verb == "above"
                            ? sql::binary(sql::Op::Greater, rid, sql::make(sql::Literal{numbers.at(0)}))
                            : sql::make(sql::In{rid, numbers, verb == "beside"}));
    tell(narrowed, {});
  }

  void parameters(const std::string& statement) {
    std::string names;
    for (const std::string& name : sql::parametersIn(statement)) names += (names.empty() ? "" : " ") + name;
    script_.say(names);
  }

  void filter(const sql::ExprPtr& filter) {
    narrowed_ = sql::narrowed(select_, filter);
    tell(narrowed_, {});
    const sql::ExprPtr inMemory = sql::resolveFilter(filter, select_.items);
    std::vector<std::vector<Value>> kept;
    for (const auto& row : rowsOf(select_))
      if (sql::holds(inMemory, select_.items, row)) kept.push_back(row);
    if (kept != rowsOf(narrowed_)) script_.say("but in memory " + std::to_string(kept.size()) + " rows");
  }

  void written() {
    const std::pair<const char*, const sql::Engine&> engines[] = {{"sqlite", sql::sqliteEngine()},
                                                                  {"postgres", sql::postgresEngine()}};
    for (const auto& [name, engine] : engines) {
      const sql::Written written = sql::write(narrowed_, parameters_, engine);
      script_.say(std::string(name) + ": " + written.text.substr(written.text.find(" from ") + 1));
      script_.say("  with " + joined(written.values));
    }
  }

  void columns() {
    for (const sql::Item& item : select_.items)
      script_.say(item.name + " " +
                  std::map<FieldType, const char*>{{FieldType::Text, "text"},
                                                   {FieldType::Integer, "whole"},
                                                   {FieldType::Float, "float"},
                                                   {FieldType::DateTime, "date"},
                                                   {FieldType::Blob, "bytes"}}[item.type]);
    std::string tables = select_.updatable ? "updatable:" : "read only:";
    for (const std::string& table : sql::tablesOf(select_)) tables += " " + table;
    script_.say(tables);
  }

  void walks(std::string rest) {
    const Dataset& dataset = *dm_->Find(takeWord(rest));
    const auto all =
        sql::resolve(std::get<sql::Select>(sql::parseStatement(dataset.SQL())), *store_->catalog());
    const auto select = sql::narrowed(all, sql::parseFilter(rest));
    bool any = false;
    for (auto plan = side_.prepare("explain query plan " + sql::write(select, {}, sql::sqliteEngine()).text);
         plan.step();) {
      const std::string step(plan.text(3));
      if (step == "SCAN CONSTANT ROW" ||
          (!step.starts_with("SCAN") && step.find("B-TREE FOR ORDER") == step.npos))
        continue;
      any = true;
      script_.say(step);
    }
    if (!any) script_.say("(none)");
  }

  void empty() {
    for (const TableInfo& table : store_->catalog()->tables())
      side_.execute("delete from \"" + table.name + "\"");
  }

  Transcript& script_;
  StoreFile file_;
  tool::Database side_{file_.path().string(), tool::Database::Mode::Create};
  std::shared_ptr<Store> store_;
  std::unique_ptr<TDM> dm_;
  sql::Parameters parameters_;
  sql::Select select_, narrowed_;
};

[[maybe_unused]] const bool known = registerTranscripts(TAVOLINE_CASES, [](Transcript& script) {
  Dialect dialect(script);
  while (script.next()) script.attempt([&] { dialect.perform(script.step()); });
});

}  // namespace
}  // namespace tavoline::test
