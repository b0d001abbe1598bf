// What cannot be told in the dialect's own words: odd names, long texts, and what the system itself builds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
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
    return error.what();
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

TEST(Sql, NamesParametersOnceInOrder) {
  EXPECT_THAT(sql::parametersOf(sql::parseStatement(
                  "select :b as x from type join article on code=:A where code between :x and :a and :B=1")),
              ElementsAre("b", "A", "x"));
  EXPECT_THAT(sql::parametersOf(sql::parseStatement("update type set code=:z where code=:y")),
              ElementsAre("z", "y"));
}

TEST(Sql, NamesAreQuotedAndValuesBound) {
  const Catalog odd({{"l\"ui", {{"a b", FieldType::Text, 0, {}}}}});
  const auto parsed = sql::parseStatement("select [a b] as [x\"y] from [l\"ui] where [a b]='l''été; \" --'");
  const sql::Written written =
      sql::write(sql::resolve(std::get<sql::Select>(parsed), odd), {}, sql::sqliteEngine());
  EXPECT_EQ(written.text,
            R"(select "l""ui"."a b" as "x""y" from "l""ui" where "l""ui"."a b" = ?1 order by "l""ui"."rid")");
  EXPECT_THAT(written.values, ElementsAre("l'été; \" --"));
}

TEST(Sql, WhatTheSystemAddsToAStatement) {
  const test::StoreFile file;
  const auto store = file.open();
  for (const auto& [code, name] : {std::pair{1, "Boissons"}, {2, "Plats"}, {3, "Glaces"}})
    store->insert("type", {{"code", code}, {"Type_Produit", name}});
  sql::Select page =
      sql::resolve(std::get<sql::Select>(sql::parseStatement("select code from type order by Type_Produit")),
                   store->catalog());
  const auto with = [&](const sql::ExprPtr& condition) {
    sql::Select result = page;
    result.where = conjunction(result.where, condition);
    std::string codes;
    for (const auto rows = store->snapshot()->query(result); rows->next();) codes += rows->value(0).text();
    return codes;
  };
  const auto among = [](std::vector<Value> rids, bool negated = false) {
    return sql::make(sql::In{sql::rid("type"), std::move(rids), negated});
  };
  EXPECT_EQ(with(among({3, 1})), "13");
  EXPECT_EQ(with(among({3, 1}, true)), "2");
  EXPECT_EQ(with(among({})), "");
  EXPECT_EQ(with(among({}, true)), "132");
  EXPECT_EQ(with(sql::binary(sql::Op::Greater, sql::rid("type"), sql::make(sql::Literal{1}))), "32");
  page.limit = 2;
  EXPECT_EQ(with(nullptr), "13");
  page.orderBy = {{sql::rid("type"), true}};
  EXPECT_EQ(with(nullptr), "32");
}

TEST(Sql, MissingValuesAreNeitherTrueNorFalse) {
  const std::vector<sql::Item> columns = {{nullptr, "n", FieldType::Integer},
                                          {nullptr, "t", FieldType::Text}};
  const auto conditionOf = [](const std::string& text) {
    return std::get<sql::Select>(sql::parseStatement("select * from x where " + text)).where;
  };
  const sql::ExprPtr n = sql::make(sql::Column{"", "n", FieldType::Integer});
  const struct {
    sql::ExprPtr condition;
    bool ofFive, ofNull;
  } cases[] = {
      {conditionOf("n=5"), true, false},
      {conditionOf("not n=5"), false, false},
      {conditionOf("not n=6"), true, false},
      {conditionOf("n is null"), false, true},
      {conditionOf("n is not null"), true, false},
      {conditionOf("n=6 or n is null"), false, true},
      {conditionOf("n=5 and not n is null"), true, false},
      {conditionOf("n between 9 and 1"), true, false},
      {conditionOf("not n between 6 and 9"), true, false},
      {sql::make(sql::In{n, {4, 5}, false}), true, false},
      {sql::make(sql::In{n, {4, 5}, true}), false, false},
      {conditionOf("t like 'É%'"), true, true},
      {conditionOf("n*2>9"), true, false},
  };
  int number = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(++number);
    EXPECT_EQ(sql::holds(c.condition, columns, {5, "été"}), c.ofFive);
    EXPECT_EQ(sql::holds(c.condition, columns, {Value(), "été"}), c.ofNull);
  }
}

}  // namespace
}  // namespace tavoline
