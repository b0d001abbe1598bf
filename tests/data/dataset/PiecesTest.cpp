// What a cursor is made of, each piece alone.

#include <gmock/gmock.h>

#include <numeric>
#include <random>

#include "data/dataset/DatasetFixture.h"
#include "data/dataset/ResultCursor.h"
#include "data/dataset/RowList.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "support/StoreCounting.h"

namespace tavoline {
namespace {

class Pieces : public DatasetTest {
 protected:
  CursorSource source(const char* statement) {
    const sql::Statement parsed = sql::parseStatement(statement);
    return {sql::resolve(std::get<sql::Select>(parsed), *here->catalog()),
            {},
            HeldVersion(*here),
            here->catalog()};
  }
  void addPlaces(int last, const char* name) {
    file->run("with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
              std::to_string(last) + ") insert into Endroit (ID_endroit, Endoit) select i, " + name +
              " from n");
  }
  static std::string listed(const std::vector<TableRow>& rows) {
    std::string text;
    for (const TableRow& row : rows) text += (text.empty() ? "" : " ") + row.values[1].text();
    return text;
  }
  static std::string listed(RowList& list) {
    std::string text;
    for (std::size_t i = 0; i < list.count(); ++i) text += (i ? " " : "") + std::to_string(list[i]);
    return text;
  }
  static TableRow row(const TablePages& pages, RowId rid, const char* name) {
    TableRow row{rid, {Value(rid), Value(name)}, {}, {}};
    row.key = pages.order().keyOf(row.values, rid);
    return row;
  }
};

TEST_F(Pieces, PagesTellHowFarTheyWentAlsoWhereNothingOnThemBelongsToTheRows) {
  for (int i = 1; i <= 9; ++i) addPlace(*here, i, i <= 6 ? "b" : "a");
  TablePages pages(source("select * from Endroit where Endoit='a' or ID_endroit=1 order by Endoit"));
  EXPECT_EQ(listed(pages.read({}, 2).rows), "a a");
  here->update("Endroit", 8, {{"Endoit", Value("z")}});
  addPlace(*here, 10, "a");
  pages.moveOn(here->snapshot(), {});
  const auto first = pages.read({}, 3);
  EXPECT_EQ(listed(first.rows), "a a b") << "the tenth came later";
  const auto second = pages.read({.from = first.end, .inclusive = false}, 4);
  EXPECT_EQ(listed(second.rows), "");
  EXPECT_FALSE(second.exhausted);
  const auto third = pages.read({.from = second.end, .inclusive = false}, 4);
  EXPECT_EQ(listed(third.rows), "z");
  EXPECT_TRUE(third.exhausted);
  EXPECT_EQ(listed(pages.read({.from = third.rows[0].key, .inclusive = false, .backwards = true}, 9).rows),
            "b a a");
}

TEST_F(Pieces, OwnWritesComeIntoThatPageOnlyWhoseStretchHoldsTheirPlace) {
  TablePages pages(source("select * from Endroit order by Endoit"));
  OwnWrites own(pages.order(), pages.columns());
  for (const auto& [rid, name] : {std::pair{2, "b"}, {4, "d"}, {6, "f"}}) {
    TableRow changed = row(pages, rid, name);
    changed.values[1] = std::string("neuf ") + name;
    own.change(changed);
  }
  own.erase(row(pages, 3, "c"));
  const std::vector<TableRow> page = {row(pages, 1, "a"), row(pages, 2, "b"), row(pages, 3, "c"),
                                      row(pages, 5, "e")};
  const RowKey end = page.back().key;
  EXPECT_EQ(listed(own.laidOver(page, {}, &end)), "a neuf b neuf d e");
  EXPECT_EQ(listed(own.laidOver(page, {}, nullptr)), "a neuf b neuf d e neuf f");
  EXPECT_EQ(listed(own.laidOver({}, {.from = end, .inclusive = false, .backwards = true}, nullptr)),
            "neuf d neuf b");
  const RowKey b = page[1].key;
  EXPECT_EQ(listed(own.laidOver({}, {.from = b, .inclusive = false}, &end)), "neuf d");
  EXPECT_EQ(listed(own.laidOver({}, {.from = b, .inclusive = true}, &end)), "neuf b neuf d");
}

TEST_F(Pieces, AListTakesInWhatIsWrittenWhileItIsCounted) {
  addPlaces(1100, "'x'");
  TablePages pages(source("select * from Endroit"));
  OwnWrites own(pages.order(), pages.columns());
  own.filter(sql::resolveFilter(sql::parseFilter("Endoit='x'"), pages.columns()));
  RowList list(pages, own);
  EXPECT_EQ(list.counted(), 1024u);
  EXPECT_FALSE(list.countOn(1060));
  own.erase(row(pages, 3, "x"));
  list.remove(3);
  own.change(row(pages, 1050, "y"));
  list.remove(1050);
  own.change(row(pages, 1060, "x"));
  own.insert(row(pages, 1200, "x"));
  list.add(1200);
  own.insert(row(pages, 1201, "y"));
  EXPECT_EQ(list.counted(), 1023u);
  EXPECT_EQ(list.placeOf(1060), 1057u);
  EXPECT_EQ(list.placeOf(1050), std::nullopt);
  EXPECT_EQ(list.count(), 1099u);
  EXPECT_EQ(list[1098], 1200);
}

TEST_F(Pieces, WhatWasReadByNumberIsLetGoAndAStreamUnderWayIsGivenUpInAQuietMoment) {
  addPlaces(1300, "i");
  StoreCounts counts;
  const auto counting = std::make_shared<CountingStore>(here, counts);
  Connected rows(counting, "select * from Endroit");
  rows.Open();
  for (std::size_t i = 0; i < 1300; ++i) ASSERT_EQ(rows.ValueAt(i, 0).toInteger(), static_cast<int>(i) + 1);
  counts = {};
  EXPECT_EQ(rows.ValueAt(0, 0).toInteger(), 1);
  EXPECT_EQ(counts.queries, 1) << "all are held";

  Connected names(counting, "select Endroit.Endoit from Endroit");
  names.Open();
  EXPECT_FALSE(names.Eof());
  EXPECT_EQ(counts.streams, 1);
  here->insert("type", {{"code", Value(1)}});
  names.Settle(here->snapshot());
  EXPECT_EQ(counts.streams, 0) << "it holds an old version";
  EXPECT_EQ(names.RecordCount(), 1300u);
}

/// A result of which few rows are kept, against the whole of it in memory.
TEST_F(Pieces, AResultShowsWhatTheWholeOfItWouldShowWhateverItKeeps) {
  constexpr std::size_t kKeptHere = 40;
  std::mt19937 random(5);
  std::vector<int> rows(300);
  std::iota(rows.begin(), rows.end(), 1);
  addPlaces(300, "'x'");
  ResultCursor cursor(source("select Endroit.ID_endroit, Endroit.Endoit from Endroit"), kKeptHere);
  std::size_t at = 0;
  const auto pick = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  for (int step = 0; step < 2000 && !HasFailure(); ++step) {
    const std::size_t operation = pick(10), n = rows.size(), some = pick(n + 20);
    SCOPED_TRACE("step " + std::to_string(step) + ": " + std::to_string(operation));
    switch (operation) {
      case 0:
        EXPECT_EQ(cursor.moveTo(some), some < n);
        if (some < n) at = some;
        break;
      case 1:
        EXPECT_EQ(cursor.valueAt(some, 0).text(), some < n ? std::to_string(rows[some]) : "");
        break;
      case 2:
        for (std::size_t i = pick(90); i > 0; --i) at += cursor.next();
        break;
      case 3:
        for (std::size_t i = pick(90); i > 0; --i) at -= cursor.prior();
        break;
      case 4:
        cursor.last();
        at = n - 1;
        break;
      case 5:
        EXPECT_EQ(cursor.count(), n);
        break;
      case 6:
        there->insert("type", {{"code", Value(step)}});
        cursor.release(here->snapshot());
        break;
      case 7: {
        const int id = rows[pick(n)];
        if (n < 100 || pick(4)) break;
        there->erase("Endroit", id);
        std::size_t before = 0;
        while (rows[before] != id) ++before;
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(before));
        if (before < at || at == rows.size()) --at;
        addPlace(*there, 1000 + step, "c");
        cursor.refresh(here->snapshot());
        break;
      }
      case 8:
        EXPECT_EQ(cursor.recordOf(0, Value(rows[some % n])), static_cast<int>(some % n));
        break;
      default:
        EXPECT_EQ(cursor.record(), static_cast<int>(at));
    }
    EXPECT_TRUE(cursor.onRow());
    EXPECT_EQ(cursor.value(0).toInteger(), rows[at]);
    EXPECT_LE(cursor.held(), kKeptHere);
  }
}

TEST_F(Pieces, MonthsAreReadOneAfterAnotherAsTheyWouldBeAllAtOnce) {
  here->insert("article", {{"code_barre", Value("1")}, {"designation_article", Value("Thé")}});
  here->insert("article", {{"code_barre", Value("2")}, {"designation_article", Value("Café")}});
  for (int order = 1; order <= 60; ++order) {
    here->insert("commande", {{"n_commande", Value(order)},
                              {"M", Value(1 + order % 12)},
                              {"A", Value(2025 + order / 36)},
                              {"tcc", Value(order)},
                              {"etat_commande", Value("Terminer")}});
    here->insert("relation_commande",
                 {{"n_commande", Value(order)}, {"code_article", Value(1 + order / 12 % 2)}});
  }
  TDM dm(here);
  const auto best = [&](const char* filter) {
    dm.best2.FilterBy(filter);
    std::string seen;
    for (dm.best2.First(); !dm.best2.Eof(); dm.best2.Next())
      for (const char* field : {"M", "A", "designation_article", "SumOftcc"})
        seen += dm.best2[field].text() + (*field == 'S' ? ", " : " ");
    return seen;
  };
  const std::string atOnce = best("M>'1' and M<'9' and A='2025'");
  EXPECT_THAT(atOnce, testing::StartsWith("2 2025 Café 13, 2 2025 Thé 26, 3 2025 Café 14, "));
  EXPECT_EQ(best("M>='2' and M<='8' and A='2025'"), atOnce);
  EXPECT_EQ(best("M>='8' and M<='2' and A='2025'"), "");
  dm.best2.FilterBy("M>='2' and M<='8' and A='2025'");
  int steps = 1;
  while (!dm.best2.CountOn(1)) ++steps;
  EXPECT_EQ(steps, 15) << "a look at the clock for each of fourteen rows";
}

}  // namespace
}  // namespace tavoline
