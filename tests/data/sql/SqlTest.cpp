// What cannot be told in the dialect's own words: odd names, long texts, and lists of values.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/sql/Writer.h"
#include "data/store/sqlite/Engine.h"
#include "data/value/Errors.h"

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
