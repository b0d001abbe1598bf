// Statements and filters of the dialect on a small cafeteria, told in text files.

#include <fstream>
#include <iterator>
#include <map>

#include "data/DMU.h"
#include "data/sql/Lexer.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/store/sqlite/Engine.h"
#include "support/Literals.h"
#include "support/StoreFile.h"
#include "support/Verbs.h"

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

  std::string subject;

  void run(std::string& text) { run(text, {}); }
  void dataset(std::string& step) {
    const Dataset& dataset = *dm_->Find(takeWord(step));
    run(dataset.SQL(), words(step));
  }
  void filter(std::string& text) { narrow(sql::parseFilter(text)); }
  void where(std::string& text) {
    narrow(std::get<sql::Select>(sql::parseStatement("select * from x where " + text)).where);
  }
  void limit(std::string& count) { select_.limit = std::stoi(count); }
  void newest(std::string& table) { select_.orderBy = {{sql::rid(table), true}}; }
  void among(std::string& rest) {
    const sql::ExprPtr rid = sql::rid(takeWord(rest));
    byNumber(sql::make(sql::In{rid, numbers(rest), false}));
  }
  void beside(std::string& rest) {
    const sql::ExprPtr rid = sql::rid(takeWord(rest));
    byNumber(sql::make(sql::In{rid, numbers(rest), true}));
  }
  void above(std::string& rest) {
    const sql::ExprPtr rid = sql::rid(takeWord(rest));
    byNumber(sql::binary(sql::Op::Greater, rid, sql::make(sql::Literal{valueOf(rest)})));
  }
  void param(std::string& value) {
    const std::string name = takeWord(value);
    parameters_[name] = valueOf(value);
  }

  void run(const std::string& text, const std::vector<std::string>& shown) {
    const sql::Statement statement = sql::parseStatement(text);
    if (const auto* update = std::get_if<sql::Update>(&statement))
      return store_->execute(sql::resolve(*update, *store_->catalog()), parameters_);
    select_ = narrowed_ = sql::resolve(std::get<sql::Select>(statement), *store_->catalog());
    tell(select_, shown);
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

  static std::vector<Value> numbers(const std::string& text) {
    std::vector<Value> all;
    for (const std::string& word : words(text)) all.push_back(valueOf(word));
    return all;
  }
  void byNumber(const sql::ExprPtr& condition) {
    sql::Select narrowed = select_;
    narrowed.where = conjunction(narrowed.where, condition);
    tell(narrowed, {});
  }

  void parameters(std::string& statement) {
    std::string names;
    for (const std::string& name : sql::parametersIn(statement)) names += (names.empty() ? "" : " ") + name;
    script_.say(names);
  }

  void narrow(const sql::ExprPtr& filter) {
    narrowed_ = sql::narrowed(select_, filter);
    tell(narrowed_, {});
    const sql::ExprPtr inMemory = sql::resolveFilter(filter, select_.items);
    std::vector<std::vector<Value>> kept;
    for (const auto& row : rowsOf(select_))
      if (sql::holds(inMemory, select_.items, row)) kept.push_back(row);
    if (kept != rowsOf(narrowed_)) script_.say("but in memory " + std::to_string(kept.size()) + " rows");
  }

  void written(std::string&) {
    const sql::Written written = sql::write(narrowed_, parameters_, sqlite::engine());
    script_.say(written.text.substr(written.text.find(" from ") + 1));
    script_.say("with " + joined(written.values));
  }

  void columns(std::string&) {
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

  void walks(std::string& rest) {
    const Dataset& dataset = *dm_->Find(takeWord(rest));
    const auto all =
        sql::resolve(std::get<sql::Select>(sql::parseStatement(dataset.SQL())), *store_->catalog());
    const auto select = sql::narrowed(all, sql::parseFilter(rest));
    bool any = false;
    for (auto plan = side_.prepare("explain query plan " + sql::write(select, {}, sqlite::engine()).text);
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

  void empty(std::string&) {
    for (const TableInfo& table : store_->catalog()->tables())
      side_.execute("delete from \"" + table.name + "\"");
  }

 private:
  Transcript& script_;
  StoreFile file_;
  sqlite::Connection side_ = sideDoor(file_.path());
  std::shared_ptr<Store> store_;
  std::unique_ptr<TDM> dm_;
  sql::Parameters parameters_;
  sql::Select select_, narrowed_;
};

const Verbs<Dialect> kVerbs(
    "statements",
    {{"run STATEMENT", "a select says its rows", static_cast<void (Dialect::*)(std::string&)>(&Dialect::run)},
     {"dataset DATASET [COLUMN]...", "runs the statement of a dataset; of its columns those told, or all",
      &Dialect::dataset},
     {"param NAME VALUE", "sets a parameter", &Dialect::param},
     {"narrow FILTER", "the last select narrowed, in the store and, which has to be the same, in memory",
      &Dialect::filter},
     {"where CONDITION", "the same, by any condition of a statement", &Dialect::where},
     {"among TABLE [RID]...", "the last select, only these rows", &Dialect::among},
     {"beside TABLE [RID]...", "the last select, all but these rows", &Dialect::beside},
     {"above TABLE RID", "the last select, only rows above this one", &Dialect::above},
     {"limit COUNT", "the last select cut to so many rows", &Dialect::limit},
     {"newest TABLE", "the last select, its newest rows first", &Dialect::newest},
     {"text", "the last select as the engine gets it, behind its select list, and its values",
      &Dialect::written},
     {"columns", "of the last select, with their types, then its tables", &Dialect::columns},
     {"parameters STATEMENT", "the names of its parameters", &Dialect::parameters},
     {"walks DATASET FILTER", "the tables that the engine goes through row by row", &Dialect::walks},
     {"empty", "deletes all rows", &Dialect::empty}});
[[maybe_unused]] const bool known = kVerbs.registerTranscripts(TAVOLINE_CASES);

}  // namespace
}  // namespace tavoline::test
