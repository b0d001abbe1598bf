#include <random>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

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
