// The text for each engine, and the values that go beside it.

#include "data/sql/Writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sql/Cafeteria.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"

namespace tavoline {
namespace {

using test::Cafeteria;
using test::select;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> texts(const std::vector<Value>& values) {
  std::vector<std::string> result;
  result.reserve(values.size());
  for (const Value& value : values) result.push_back(value.isNull() ? "null" : value.text());
  return result;
}

/// What comes behind the select list, which says nothing here.
std::string tail(const sql::Written& written) {
  return written.text.substr(written.text.find(" from ") + 1);
}

TEST(Writer, SaysTheSameToBothEngines) {
  sql::Parameters parameters;
  parameters["x"] = "2";
  parameters["z"] = 5;
  const struct {
    const char* text;
    const char* filter;
    const char* sqlite;
    const char* postgres;
    std::vector<std::string> values;
  } cases[] = {
      {"select code from type order by type_produit desc",
       "",
       R"(from "type" order by "type"."Type_Produit" desc, "type"."rid")",
       R"(from "type" order by "type"."Type_Produit" collate "C" desc nulls last, "type"."rid" nulls first)",
       {}},
      {"select login from commande where J between :x and 1 and login like :z",
       "login>='a'",
       R"(from "commande" where ("commande"."J" between min(?1, ?2) and max(?1, ?2) and )"
       R"(tavoline_like(?3, "commande"."login") and "commande"."login" >= ?4) order by "commande"."rid")",
       R"(from "commande" where ("commande"."J" between symmetric $1 and $2 and )"
       R"(lower("commande"."login") like lower($3) escape '' and "commande"."login" collate "C" >= $4) )"
       R"(order by "commande"."rid" nulls first)",
       {"2", "1", "5", "a"}},
      {"select article, sum(total) as s from relation_commande join commande on "
       "relation_commande.n_commande=commande.n_commande group by article",
       "s>1.5",
       R"(from "relation_commande", "commande" where "relation_commande"."n_commande" = "commande"."n_commande" )"
       R"(group by "relation_commande"."article" having sum("relation_commande"."total") > ?1 )"
       R"(order by "relation_commande"."article")",
       R"(from "relation_commande", "commande" where "relation_commande"."n_commande" = "commande"."n_commande" )"
       R"(group by "relation_commande"."article" having sum("relation_commande"."total") > $1 )"
       R"(order by "relation_commande"."article" collate "C" nulls first)",
       {"1,5"}},
      {"select first(nom) as f from utilisateur where role='User'",
       "",
       R"(from "utilisateur" where "utilisateur"."role" = ?1 order by "utilisateur"."rid" limit 1) as "f")",
       R"(from "utilisateur" where "utilisateur"."role" = $1 order by "utilisateur"."rid" nulls first limit 1) as "f")",
       {"User"}},
      {"select n_commande from commande where tcc/2=1 or :x is null",
       "",
       R"(from "commande" where ((cast("commande"."tcc" as double precision) / )"
       R"(nullif(cast(?1 as double precision), ?2)) = ?3 or ?4 is null) order by "commande"."rid")",
       R"(from "commande" where ((cast("commande"."tcc" as double precision) / )"
       R"(nullif(cast($1 as double precision), $2)) = $3 or $4 is null) order by "commande"."rid" nulls first)",
       {"2", "0", "1", "2"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const sql::Select resolved = select(c.text, c.filter);
    const sql::Written sqlite = sql::write(resolved, parameters, sql::sqliteEngine());
    const sql::Written postgres = sql::write(resolved, parameters, sql::postgresEngine());
    EXPECT_EQ(tail(sqlite), c.sqlite);
    EXPECT_EQ(tail(postgres), c.postgres);
    EXPECT_EQ(texts(sqlite.values), c.values);
    EXPECT_EQ(texts(postgres.values), c.values);
  }
}

TEST(Writer, NamesAreQuotedAndValuesBound) {
  const Catalog odd({{"l\"ui", {{"a b", FieldType::Text, 0, {}}}}});
  const auto parsed = sql::parseStatement("select [a b] as [x\"y] from [l\"ui] where [a b]='l''été; \" --'");
  const sql::Written written =
      sql::write(sql::resolve(std::get<sql::Select>(parsed), odd), {}, sql::sqliteEngine());
  EXPECT_EQ(written.text,
            R"(select "l""ui"."a b" as "x""y" from "l""ui" where "l""ui"."a b" = ?1 order by "l""ui"."rid")");
  EXPECT_THAT(texts(written.values), ElementsAre("l'été; \" --"));
}

TEST(Writer, WhatTheSystemAddsToAStatement) {
  const Cafeteria cafeteria;
  sql::Select page = select("select code from type order by Type_Produit");
  const auto with = [&](const sql::ExprPtr& condition) {
    sql::Select result = page;
    result.where = conjunction(result.where, condition);
    return cafeteria.rows(result);
  };
  const auto among = [](std::vector<Value> rids, bool negated = false) {
    return sql::make(sql::In{sql::rid("type"), std::move(rids), negated});
  };
  EXPECT_THAT(with(among({3, 1})), ElementsAre("1", "3"));
  EXPECT_THAT(with(among({3, 1}, true)), ElementsAre("2"));
  EXPECT_THAT(with(among({})), IsEmpty());
  EXPECT_THAT(with(among({}, true)), ElementsAre("1", "3", "2"));
  EXPECT_THAT(with(sql::binary(sql::Op::Greater, sql::rid("type"), sql::make(sql::Literal{1}))),
              ElementsAre("3", "2"));

  page.limit = 2;
  EXPECT_THAT(with(nullptr), ElementsAre("1", "3"));
  page.orderBy = {{sql::rid("type"), true}};
  EXPECT_THAT(with(nullptr), ElementsAre("3", "2"));
  EXPECT_EQ(tail(sql::write(page, {}, sql::sqliteEngine())),
            R"(from "type" order by "type"."rid" desc limit 2)");
}

TEST(Writer, MissingValuesComeFirst) {
  const Cafeteria cafeteria;
  EXPECT_THAT(cafeteria.rows(select("select n_commande from commande order by tcc, n_commande")),
              ElementsAre("2", "3", "5", "1", "4"));
  EXPECT_THAT(cafeteria.rows(select("select n_commande from commande order by tcc desc")),
              ElementsAre("4", "1", "5", "3", "2"));
  // Equal terms leave the order of insertion.
  EXPECT_THAT(cafeteria.rows(select("select n_commande from commande order by en_caisser desc")),
              ElementsAre("3", "4", "1", "2", "5"));
}

}  // namespace
}  // namespace tavoline
