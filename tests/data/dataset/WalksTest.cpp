// Random series of operations on a dataset, against the same on a whole table in memory.

#include <random>

#include "data/dataset/DatasetFixture.h"
#include "data/value/Errors.h"

namespace tavoline {
namespace {

struct Line {
  int id;
  std::string code, value;
};
using Lines = std::vector<Line>;

/// What a dataset has to show.
struct Model {
  Lines rows;
  std::string wanted;  // the filter on value; empty: none
  int at = -1;

  int size() const { return static_cast<int>(rows.size()); }
  Line& operator[](int i) { return rows[static_cast<std::size_t>(i)]; }
  Line& current() { return (*this)[at]; }
  /// The first row from `i` on, or backwards, that the filter shows; -1 for none.
  int shown(int i, int step = 1) {
    for (i = std::min(i, step > 0 ? size() : size() - 1); i >= 0 && i < size(); i += step)
      if (shows(i)) return i;
    return -1;
  }
  bool shows(int i) { return wanted.empty() || (*this)[i].value == wanted; }
  int nth(std::size_t record) {
    int n = shown(0);
    for (; record > 0; --record) n = shown(n + 1);
    return n;
  }
  void move(int to) {
    if (to >= 0) at = to;
  }
  void settle(int i) { at = shown(i) >= 0 ? shown(i) : shown(i, -1); }
  void erase(int i) { rows.erase(rows.begin() + i); }
  std::string list() {
    std::string text;
    for (int i = shown(0); i >= 0; i = shown(i + 1)) text += (*this)[i].code + ":" + (*this)[i].value + " ";
    return text;
  }
};

struct Walk {
  const char* name;
  const char* behind;  // what follows "select * from article"
  int rows;            // more than a thousand are not all listed at once
};

class Walks : public DatasetTest, public testing::WithParamInterface<Walk> {
 protected:
  struct Operation {
    const char* name;
    void (Walks::*perform)();
    bool needsRow;
  };
  static constexpr int kOperations = 17;
  static const Operation operations[kOperations];

  void SetUp() override {
    DatasetTest::SetUp();
    random.seed(byCode ? 7 : 11);
    for (int i = 0; i < GetParam().rows; ++i) here->insert("article", fields(stored.emplace_back(fresh())));
    rows.emplace(here, (std::string("select * from article ") + GetParam().behind).c_str());
    reopen();
  }
  void TearDown() override {
    rows.reset();
    DatasetTest::TearDown();
  }

  int pick(std::size_t n) { return static_cast<int>(random() % n); }
  std::string letter(std::size_t n) { return std::string(1, static_cast<char>('a' + pick(n))); }
  Line fresh() {
    const int id = ++lastId;
    return {id, std::to_string((id * 7919) % 100000), letter(3)};
  }
  static FieldValues fields(const Line& line) {
    return {{"code_barre", line.code}, {"autre", line.value}, {"qte_min", line.id}};
  }
  Lines::iterator inStore(int id) {
    return std::find_if(stored.begin(), stored.end(), [&](const Line& line) { return line.id == id; });
  }
  static void write(Dataset& rows, const std::string& value) {
    rows.Edit();
    rows["autre"] = value;
    rows.Post();
  }

  void reopen() {
    changedElsewhere = false;
    rows->Reopen();
    model.rows = stored;
    if (conditioned) std::erase_if(model.rows, [](const Line& line) { return line.value == "c"; });
    std::stable_sort(model.rows.begin(), model.rows.end(), [this](const Line& a, const Line& b) {
      return byCode && a.code != b.code ? a.code < b.code : a.id < b.id;
    });
    model.settle(0);
  }
  void refresh() {
    changedElsewhere = false;
    const int before = model.at < 0 ? 0 : model.current().id;
    rows->Refresh();
    // A row that was written here stays current though the filter hides it, as long as it is there.
    bool stays = model.at >= 0 && !model.shows(model.at);
    int position = std::max(model.at, 0);
    for (int i = 0; i < model.size();) {
      const auto now = inStore(model[i].id);
      if (now != stored.end()) {
        model[i++].value = now->value;
        continue;
      }
      model.erase(i);
      if (i == position) stays = false;
      if (i < position) --position;
    }
    stays ? model.move(position) : model.settle(position);
    const bool gone = before != 0 && (model.at < 0 || model.current().id != before);
    EXPECT_EQ(rows->RowGone(), gone);
    if (!gone) return;
    rows->Refresh();
    EXPECT_THROW(rows->FieldValue("code_barre"), DatasetError) << "another row would take the next writes";
    EXPECT_THROW(rows->Delete(), DatasetError);
    first();
  }
  void filter() {
    const bool wasOn = !model.wanted.empty();
    model.wanted = pick(2) ? letter(4) : "";
    rows->Filtered(false);
    rows->Filter("autre='" + model.wanted + "'");
    rows->Filtered(!model.wanted.empty());
    if (wasOn || !model.wanted.empty()) model.settle(0);
  }
  void insert() {
    rows->Insert();
    for (const auto& [name, value] : fields(stored.emplace_back(fresh()))) (*rows)[name] = value;
    rows->Post();
    model.rows.push_back(stored.back());
    model.at = model.size() - 1;
  }
  void edit() {
    const std::string value = letter(3);
    const auto now = inStore(model.current().id);
    if (now == stored.end()) {  // deleted elsewhere since
      EXPECT_THROW(write(*rows, value), StoreError);
      return rows->Cancel();
    }
    write(*rows, value);
    now->value = model.current().value = value;
  }
  void erase() {
    const auto now = inStore(model.current().id);
    rows->Edit();
    (*rows)["autre"] = "typed";
    if (now == stored.end()) {
      EXPECT_THROW(rows->Delete(), StoreError);
      EXPECT_EQ((*rows)["autre"].text(), "typed");
      return rows->Cancel();
    }
    rows->Delete();
    stored.erase(now);
    model.erase(model.at);
    model.settle(model.at);
  }
  /// A new row that is given up: cancelled, deleted, or refused and cancelled.
  void giveUp() {
    const int way = pick(3);
    rows->Insert();
    (*rows)["code_barre"] = stored.front().code;
    if (way == 0) return rows->Delete();
    if (way == 1) {
      EXPECT_THROW(rows->Post(), StoreError);
    }
    rows->Cancel();
  }
  /// Something that is not in this table, so that a quiet moment may move on.
  void other() { there->insert("type", {{"code", ++lastId}}); }
  void locate() {
    const std::string value = letter(4);
    int found = model.shown(0), record = 0;
    for (; found >= 0 && model[found].value != value; ++record) found = model.shown(found + 1);
    EXPECT_EQ(rows->RecordOf("autre", value), found < 0 ? -1 : record);
    EXPECT_EQ(rows->Locate("autre", value), found >= 0);
    model.move(found);
  }
  void elsewhere() {
    if (stored.size() <= 5) return;
    changedElsewhere = true;
    const auto victim = stored.begin() + pick(stored.size());
    Connected other(there, "select * from article");
    other.Open();
    ASSERT_TRUE(other.Locate("qte_min", victim->id));
    if (pick(2)) {
      other.Delete();
      stored.erase(victim);
    } else {
      write(other, victim->value = "b");
    }
    there->insert("article", fields(stored.emplace_back(fresh())));
  }
  // Of a long table, rows that were not read yet may come from later versions once others have changed it.
  void settle() {
    if (GetParam().rows > 512 && changedElsewhere) return;
    rows->Settle(pick(3) ? here->snapshot() : nullptr);
  }
  void first() {
    rows->First();
    model.settle(0);
  }
  void last() {
    rows->Last();
    model.at = model.shown(model.size(), -1);
  }
  void prior() {
    rows->Prior();
    model.move(model.shown(model.at - 1, -1));
  }
  void jump() {
    if (rows->RecordCount() == 0) return;
    const auto record = static_cast<std::size_t>(pick(rows->RecordCount()));
    rows->MoveTo(record);
    model.at = model.nth(record);
    EXPECT_EQ(rows->RecordNumber(), static_cast<int>(record));
  }
  void count() { rows->CountOn(static_cast<std::size_t>(pick(700))); }
  void next() {
    for (int i = pick(9); i >= 0; --i) {
      rows->Next();
      model.move(model.shown(model.at + 1));
    }
  }

  /// All rows by number, and by a walk.
  void compareAll() {
    std::string listed, walked;
    for (std::size_t i = 0; i < rows->RecordCount(); ++i)
      listed += rows->ValueAt(i, 0).text() + ":" + rows->ValueAt(i, 8).text() + " ";
    EXPECT_EQ(listed, model.list());
    for (rows->First(); !rows->Eof(); rows->Next())
      walked += (*rows)["code_barre"].text() + ":" + (*rows)["autre"].text() + " ";
    EXPECT_EQ(walked, model.list());
    first();
  }

  const bool byCode = std::string(GetParam().behind).find("order") != std::string::npos;
  const bool conditioned = std::string(GetParam().behind).find("where") != std::string::npos;
  std::mt19937 random;
  int lastId = 0;
  bool changedElsewhere = false;  // since the latest opening or refresh
  Lines stored;
  Model model;
  std::optional<Connected> rows;
};

const Walks::Operation Walks::operations[] = {
    {"reopen", &Walks::reopen, false}, {"refresh", &Walks::refresh, false},
    {"filter", &Walks::filter, false}, {"insert", &Walks::insert, false},
    {"edit", &Walks::edit, true},      {"delete", &Walks::erase, true},
    {"first", &Walks::first, false},   {"elsewhere", &Walks::elsewhere, false},
    {"last", &Walks::last, false},     {"prior", &Walks::prior, true},
    {"jump", &Walks::jump, true},      {"count", &Walks::count, false},
    {"next", &Walks::next, true},      {"give up", &Walks::giveUp, false},
    {"settle", &Walks::settle, false}, {"locate", &Walks::locate, false},
    {"other", &Walks::other, false}};

TEST_P(Walks, ShowWhatAWholeTableInMemoryWouldShow) {
  for (int step = 0; step < 600 && !HasFailure(); ++step) {
    const Operation& next = operations[pick(kOperations)];
    SCOPED_TRACE("step " + std::to_string(step) + ": " + next.name);
    if (model.at >= 0 || !next.needsRow) (this->*next.perform)();
    EXPECT_EQ((*rows)["code_barre"].text(), model.at < 0 ? "" : model.current().code);
    if (const std::size_t counted = rows->RecordsCounted(); counted > 0) {
      EXPECT_EQ(rows->ValueAt(counted - 1, 0).text(), model[model.nth(counted - 1)].code);
    }
    if (step % 10 == 0) compareAll();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Tables, Walks,
    testing::Values(Walk{"ByInsertion", "", 300}, Walk{"ByCode", "order by code_barre", 300},
                    Walk{"UnderACondition", "where autre<>'c'", 300},
                    Walk{"UnderAConditionByCode", "where autre<>'c' order by code_barre", 300},
                    Walk{"LongByInsertion", "", 1600}),
    [](const auto& walk) { return walk.param.name; });

}  // namespace
}  // namespace tavoline
