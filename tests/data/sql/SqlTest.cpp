// What cannot be told in the dialect's own words: odd names, long texts, and lists of values.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "data/DMU.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Errors.h"
#include "support/StoreFile.h"

namespace tavoline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string messageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const StatementError& error) {
    return error.detail();
  }
  return "(nothing thrown)";
}

TEST(Sql, RefusesWhatWouldWearOutTheMachineAndWhatIsNothing) {
  const std::string deep(2000, '(');
  for (const std::string& text : {"select * from type where " + deep, "select * from " + deep})
    EXPECT_THAT(messageOf([&] { sql::parseStatement(text); }), HasSubstr("parenthèses"));
  std::string longFilter = "code=1";
  for (int i = 0; i < 2000; ++i) longFilter += "and code=1";
  EXPECT_THAT(messageOf([&] { sql::parseFilter(longFilter); }), HasSubstr("plus courte"));
  EXPECT_THAT(messageOf([] { sql::parseStatement(""); }),
              HasSubstr("« select » ou « update » à la fin (caractère 1)"));
  EXPECT_EQ(sql::parseFilter(""), nullptr);
  EXPECT_NO_THROW(sql::parseStatement("select code\r\nfrom type\n\n where code=1\n;"));
}

TEST(Sql, NamesAreQuotedAndValuesBound) {
  const Catalog odd({{"l\"ui", {{"a b", FieldType::Text, 0, {}}}}});
  const auto parsed = sql::parseStatement("select [a b] as [x\"y] from [l\"ui] where [a b]='l''été; \" --'");
  const sql::Written written =
      sql::write(sql::resolve(std::get<sql::Select>(parsed), odd), {}, sqlite::engine());
  EXPECT_EQ(written.text,
            R"(select "l""ui"."a b" as "x""y" from "l""ui" where "l""ui"."a b" = ?1 order by "l""ui"."rid")");
  EXPECT_THAT(written.values, ElementsAre("l'été; \" --"));
}

/// Reads, narrows and writes it as a dataset does.
void put(const std::string& statement, const std::string& filter, const Catalog& catalog) {
  const sql::Statement parsed = sql::parseStatement(statement);
  if (const auto* update = std::get_if<sql::Update>(&parsed))
    return void(sql::write(sql::resolve(*update, catalog), {}, sqlite::engine()));
  const sql::Select select = sql::resolve(std::get<sql::Select>(parsed), catalog);
  const sql::ExprPtr condition = sql::parseFilter(filter);
  sql::write(sql::narrowed(select, condition), {}, sqlite::engine());
  sql::holds(sql::resolveFilter(condition, select.items), select.items,
             std::vector<Value>(select.items.size()));
}

// Pieces of the system's own statements and filters put together anew, the same ones in every run.
TEST(Sql, OfWhateverIsTypedOnlySentencesComeOut) {
  const test::StoreFile file;
  const auto store = file.open();
  const TDM dm(store);
  std::vector<std::string> statements = {
      "select first(tcc)*2/[A] as x, last(login) from commande where not (login like 'é%' or tcc is null)"};
  for (const Dataset* dataset : dm.Datasets()) statements.push_back(dataset->SQL());
  const std::string filters = "n_commande='12'and table='l''été' or j>='1'and A=\"2024\"and tcc<>-2.5";
  std::mt19937 random(20240501);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  const auto piece = [&](const std::string& of) { return of.substr(below(of.size()), below(60)); };
  int whole = 0;
  for (int run = 0; run < 10000; ++run) {
    std::string text = statements[below(statements.size())];
    for (std::size_t parts = below(3); parts > 0; --parts)
      text.insert(below(text.size() + 1), piece(statements[below(statements.size())]));
    if (below(2) == 0) text[below(text.size())] = static_cast<char>(below(256));
    try {
      put(text, piece(filters), *store->catalog());
      ++whole;
    } catch (const Error&) {  // a sentence for the user
    } catch (const std::exception& failure) {
      FAIL() << failure.what() << ": " << text;
    }
  }
  EXPECT_GT(whole, 100) << "some of them mean something";
}

TEST(Sql, AListInMemoryHoldsAsInTheStore) {
  const sql::ExprPtr n = sql::make(sql::Column{"", "n", FieldType::Integer});
  for (const bool negated : {false, true}) {
    const auto holds = [&](const Value& value) {
      return sql::holds(sql::make(sql::In{n, {4, 5}, negated}), {{nullptr, "n", FieldType::Integer}},
                        {value});
    };
    EXPECT_EQ(holds(5), !negated);
    EXPECT_EQ(holds(6), negated);
    EXPECT_FALSE(holds(Value())) << "a missing value is neither in nor out";
  }
}

}  // namespace
}  // namespace tavoline
