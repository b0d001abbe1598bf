#include <random>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

using Snapshots = DatasetTest;

TEST_F(Snapshots, WhatOthersWriteShowsOnlyAfterReopening) {
  addPlace(*here, 1, "un");
  Connected mine(here, "select * from Endroit"), second(here, "select * from Endroit"),
      theirs(there, "select * from Endroit");
  mine.Open();
  second.Open();
  theirs.Open();
  mine.Edit();
  mine["Endoit"] = "UN";
  mine.Post();
  EXPECT_EQ(mine["Endoit"].text(), "UN");
  EXPECT_EQ(second["Endoit"].text(), "un");
  EXPECT_EQ(theirs["Endoit"].text(), "un");
  second.Reopen();
  theirs.Reopen();
  EXPECT_EQ(second["Endoit"].text(), "UN");
  EXPECT_EQ(theirs["Endoit"].text(), "UN");
}

TEST_F(Snapshots, AnUnchangedPostWritesNothing) {
  addPlace(*here, 1, "un");
  Connected mine(here, "select * from Endroit");
  mine.Open();
  const auto before = here->snapshot();
  mine.Edit();
  mine.Post();
  EXPECT_TRUE(before->latest());
  for (const bool open : {false, true}) {
    mine.Active(open);
    EXPECT_EQ(mine.Active(), open);
  }
}

TEST_F(Snapshots, DisabledControlsHearNothing) {
  struct Ear final : DataListener {
    void dataEvent(DataEvent) override { ++events; }
    int events = 0;
  } ear;
  addPlace(*here, 1, "un");
  Connected mine(here, "select * from Endroit");
  DataSource source("source", mine);
  source.add(&ear);
  mine.Open();
  EXPECT_GT(ear.events, 0);
  mine.DisableControls();
  ear.events = 0;
  mine.Next();
  mine.Reopen();
  EXPECT_EQ(ear.events, 0);
  source.remove(&ear);
}

TEST_F(Snapshots, AnActionShowsInAnOpenDatasetOnlyAfterRefresh) {
  here->insert("Table_", {{"ID_table", Value(1)}, {"table", Value("T1")}, {"control", Value("close")}});
  Connected tables(here, "select * from Table_"), unlock(here, "update table_ set table_.control='open'");
  tables.Open();
  unlock.ExecSQL();
  EXPECT_EQ(tables["control"].text(), "close");
  tables.Refresh();
  EXPECT_EQ(tables["control"].text(), "open");
}

TEST_F(Snapshots, IdleTimeExchangesOnlyWhatShowsTheSameRows) {
  addPlace(*here, 1, "un");
  Connected places(here, "select * from Endroit"), tables(here, "select * from Table_"),
      names(here, "select Endroit.Endoit from Endroit");
  places.Open();
  tables.Open();
  names.Open();
  addPlace(*here, 2, "deux");
  for (Dataset* each :
       {static_cast<Dataset*>(&places), static_cast<Dataset*>(&tables), static_cast<Dataset*>(&names)})
    each->Renew();
  EXPECT_EQ(places.RecordCount(), 1u);
  EXPECT_EQ(names.RecordCount(), 1u);
  EXPECT_EQ(tables.RecordCount(), 0u);
}

TEST_F(Snapshots, ParametersStandAsTheyWereAtOpen) {
  addPlace(*here, 1, "un");
  addPlace(*here, 2, "deux");
  Connected places(here, "select Endroit.Endoit from Endroit where Endroit.ID_endroit between :x and :y",
                   {"z"});
  places.Open();
  EXPECT_TRUE(places.Eof());
  places.Close();
  places.ParamByName("X") = 2;
  places.ParamByName("y") = 1;
  places.ParamByName("z") = "déclaré, sans usage";
  places.Open();
  places.ParamByName("x") = 99;
  EXPECT_EQ(places.RecordCount(), 2u);
  EXPECT_THROW(places.ParamByName("w"), DatasetError);
  EXPECT_THROW(places.Edit(), DatasetError);
}

TEST_F(Snapshots, PicturesComeOneByOneAndSurviveAnEditOfAnotherField) {
  const auto picture = std::make_shared<const Bytes>(Bytes{1, 2, 3, 0, 255});
  here->insert(
      "article",
      {{"code_barre", Value("1")}, {"designation_article", Value("CAFÉ")}, {"image", Value(picture)}});
  Connected articles(here, "select * from article order by code_barre");
  articles.Open();
  articles.Edit();
  articles["prix_vente"] = 120.5;
  EXPECT_EQ(*articles["image"].get().toBytes(), *picture);
  articles.Post();
  EXPECT_EQ(*articles["image"].get().toBytes(), *picture);
  articles.Edit();
  articles["image"] = Value(std::make_shared<const Bytes>(Bytes{9}));
  EXPECT_EQ(articles["image"].get().toBytes()->size(), 1u);
  articles.Post();
  articles.Reopen();
  EXPECT_EQ(articles["image"].get().toBytes()->size(), 1u);
}

TEST_F(Snapshots, ARowChangedFarDownDoesNotComeAmongTheFirstCounted) {
  for (int i = 1; i <= 1100; ++i) addPlace(*here, i, std::to_string(i));
  Connected places(here, "select * from Endroit");
  places.Open();
  places.Last();
  places.Edit();
  places["Endoit"] = "changé";
  places.Post();
  places.FilterBy("ID_endroit=1100");
  places.Filtered(false);
  const std::size_t counted = places.RecordsCounted();
  EXPECT_LT(counted, 1100u);
  EXPECT_EQ(places.ValueAt(counted - 1, 0).toInteger(), static_cast<std::int64_t>(counted));
  EXPECT_TRUE(places.CountOn(2000));
  EXPECT_EQ(places.ValueAt(1099, 1).text(), "changé");
}

// --- Against a plain model
// --------------------------------------------------------------------------------------

/// The rows as a whole table in memory would show them, for random series of operations.
struct Model {
  struct Row {
    int id;
    std::string code, value;
    bool own = false;
  };
  std::vector<Row> rows;
  std::string wanted;  // the filter on value; empty: none
  int at = -1;

  bool shows(const Row& row) const { return wanted.empty() || row.value == wanted; }
  int after(int i) const {
    for (int n = std::max(i, 0); n < static_cast<int>(rows.size()); ++n)
      if (shows(rows[static_cast<std::size_t>(n)])) return n;
    return -1;
  }
  int before(int i) const {
    for (int n = std::min(i, static_cast<int>(rows.size()) - 1); n >= 0; --n)
      if (shows(rows[static_cast<std::size_t>(n)])) return n;
    return -1;
  }
  int nth(std::size_t record) const {
    int n = after(0);
    for (; record > 0; --record) n = after(n + 1);
    return n;
  }
  void settle(int i) { at = after(i) >= 0 ? after(i) : before(i); }
  void sort(bool byCode, std::size_t count) {
    std::stable_sort(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(count),
                     [&](const Row& a, const Row& b) {
                       return byCode && a.code != b.code ? a.code < b.code : a.id < b.id;
                     });
  }
  std::string list() const {
    std::string text;
    for (const Row& row : rows)
      if (shows(row)) text += row.code + ":" + row.value + " ";
    return text;
  }
};

struct Walk {
  const char* name;
  bool byCode;
  int rows;  // more than a thousand are not all listed at once
};

class Walks : public DatasetTest, public testing::WithParamInterface<Walk> {
 protected:
  static std::string firstOnes(Dataset& rows, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
      text += rows.ValueAt(i, 0).text() + ":" + rows.ValueAt(i, 8).text() + " ";
    return text;
  }
};

TEST_P(Walks, ShowWhatAWholeTableInMemoryWouldShow) {
  const bool byCode = GetParam().byCode;
  std::mt19937 random(byCode ? 7 : 11);
  const auto pick = [&](std::size_t n) { return static_cast<int>(random() % n); };
  int nextId = 0;
  const auto fresh = [&] {
    const int id = ++nextId;
    return Model::Row{id, std::to_string((id * 7919) % 100000),
                      std::string(1, static_cast<char>('a' + pick(3)))};
  };
  const auto fields = [](const Model::Row& r) {
    return FieldValues{{"code_barre", Value(r.code)}, {"autre", Value(r.value)}, {"qte_min", Value(r.id)}};
  };
  std::vector<Model::Row> stored;
  std::map<int, RowId> rids;
  for (int i = 0; i < GetParam().rows; ++i) {
    stored.push_back(fresh());
    rids[stored.back().id] = here->insert("article", fields(stored.back()));
  }
  Connected rows(here, byCode ? "select * from article order by code_barre" : "select * from article");
  Model model;
  const auto inStore = [&](int id) {
    return std::find_if(stored.begin(), stored.end(), [&](auto& r) { return r.id == id; });
  };
  const auto reopen = [&] {
    rows.Reopen();
    model.rows = stored;
    for (auto& row : model.rows) row.own = false;
    model.sort(byCode, model.rows.size());
    model.settle(0);
  };
  reopen();
  for (int step = 0; step < 600; ++step) {
    const int choice = pick(13);
    const bool any = model.at >= 0;
    const auto current = [&]() -> Model::Row& { return model.rows[static_cast<std::size_t>(model.at)]; };
    std::string did;
    if (choice == 0) {
      did = "reopen";
      reopen();
    } else if (choice == 1) {
      did = "refresh";
      rows.Refresh();
      const int position = model.at;
      std::size_t gone = 0;
      for (std::size_t i = 0; i < model.rows.size();) {
        const auto now = inStore(model.rows[i].id);
        if (now == stored.end()) {
          if (static_cast<int>(i) < position - static_cast<int>(gone)) ++gone;
          model.rows.erase(model.rows.begin() + static_cast<std::ptrdiff_t>(i));
        } else {
          model.rows[i++].value = now->value;
        }
      }
      if (any)
        model.settle(position - static_cast<int>(gone));
      else
        model.settle(0);
    } else if (choice == 2) {
      const bool wasOn = !model.wanted.empty();
      model.wanted = pick(2) ? std::string(1, static_cast<char>('a' + pick(4))) : "";
      did = "filter " + model.wanted;
      rows.Filtered(false);
      rows.Filter("autre='" + model.wanted + "'");
      rows.Filtered(!model.wanted.empty());
      if (wasOn || !model.wanted.empty()) model.settle(0);
    } else if (choice == 3) {
      did = "insert";
      Model::Row row = fresh();
      rows.Insert();
      for (const auto& [name, value] : fields(row)) rows[name] = value;
      rows.Post();
      stored.push_back(row);
      row.own = true;
      model.rows.push_back(row);
      model.settle(static_cast<int>(model.rows.size()) - 1);
    } else if (choice == 4 && any) {
      did = "edit";
      const std::string value(1, static_cast<char>('a' + pick(3)));
      const auto now = inStore(current().id);
      rows.Edit();
      rows["autre"] = value;
      if (now == stored.end()) {  // deleted elsewhere since
        EXPECT_THROW(rows.Post(), StoreError);
        rows.Cancel();
      } else {
        rows.Post();
        now->value = current().value = value;
        model.settle(model.at);
      }
    } else if (choice == 5 && any && inStore(current().id) != stored.end()) {
      did = "delete";
      rows.Delete();
      stored.erase(inStore(current().id));
      model.rows.erase(model.rows.begin() + model.at);
      model.settle(model.at);
    } else if (choice == 6 && stored.size() > 5) {  // another workstation
      did = "elsewhere";
      const auto victim = stored.begin() + pick(stored.size());
      Connected other(there, "select * from article");
      other.Open();
      ASSERT_TRUE(other.Locate("qte_min", victim->id));
      if (pick(2)) {
        other.Delete();
        stored.erase(victim);
      } else {
        victim->value = "b";
        other.Edit();
        other["autre"] = "b";
        other.Post();
      }
      stored.push_back(fresh());
      there->insert("article", fields(stored.back()));
    } else if (choice == 7) {
      did = "first";
      rows.First();
      model.settle(0);
    } else if (choice == 8) {
      did = "last";
      rows.Last();
      model.at = model.before(static_cast<int>(model.rows.size()));
    } else if (choice == 9 && any) {
      did = "prior";
      rows.Prior();
      if (const int p = model.before(model.at - 1); p >= 0) model.at = p;
    } else if (choice == 10 && rows.RecordCount() > 0) {
      did = "jump";
      const int record = pick(rows.RecordCount());
      rows.MoveTo(static_cast<std::size_t>(record));
      model.at = model.nth(static_cast<std::size_t>(record));
      EXPECT_EQ(rows.RecordNumber(), record);
    } else if (choice == 11) {
      did = "count";
      rows.CountOn(static_cast<std::size_t>(pick(700)));
    } else if (any) {
      did = "next";
      for (int i = pick(9); i >= 0; --i) {
        rows.Next();
        if (const int p = model.after(model.at + 1); p >= 0) model.at = p;
      }
    }
    ASSERT_EQ(rows["code_barre"].text(), model.at < 0 ? "" : current().code)
        << "step " << step << ": " << did;
    if (const std::size_t counted = rows.RecordsCounted(); counted > 0) {
      const auto& last = model.rows[static_cast<std::size_t>(model.nth(counted - 1))];
      ASSERT_EQ(rows.ValueAt(counted - 1, 0).text(), last.code) << "step " << step << ": " << did;
    }
    if (step % 10 == 0) {
      ASSERT_EQ(firstOnes(rows, rows.RecordCount()), model.list()) << "step " << step << ": " << did;
      std::string walked;
      for (rows.First(); !rows.Eof(); rows.Next())
        walked += rows["code_barre"].text() + ":" + rows["autre"].text() + " ";
      ASSERT_EQ(walked, model.list()) << "step " << step << ": " << did;
      rows.First();
      model.settle(0);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Tables, Walks,
                         testing::Values(Walk{"ByInsertion", false, 300}, Walk{"ByCode", true, 300},
                                         Walk{"LongByInsertion", false, 1600}),
                         [](const auto& walk) { return walk.param.name; });

}  // namespace
}  // namespace tavoline
