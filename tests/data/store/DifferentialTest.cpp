// The same statements, filters and writes on a file and on a server: every answer and every refusal is the
// same.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "support/Cluster.h"
#include "support/Literals.h"
#include "support/StoreFile.h"

namespace tavoline::test {
namespace {

/// Draws what a restaurant may hold and what is seldom held: accents, blanks, quotes, nothing, extremes.
class Drawing {
 public:
  explicit Drawing(std::uint32_t seed) : random_(seed) {}

  bool chance(std::size_t in) { return below(in) == 0; }
  std::size_t below(std::size_t limit) { return random_() % limit; }
  template <class T, std::size_t N>
  const T& of(const T (&all)[N]) {
    return all[below(N)];
  }

  FieldValues fields(const TableInfo& table) {
    FieldValues fields;
    for (const ColumnInfo& column : table.columns)
      if (chance(2)) fields.emplace_back(column.name, value(column.type));
    return fields;
  }
  std::string update(const TableInfo& table) {
    return "update " + table.name + " set " + table.name + ".[" + table.columns.back().name +
           "]=null where " + where(table);
  }
  std::string select(const TableInfo& table) {
    const std::string from = " from " + table.name + " where " + where(table);
    switch (below(5)) {
      case 0:
        return "select Count(*) as n, Min(" + column(table) + ") as a, Max(" + column(table) + ") as b" +
               from;
      case 1:
        return "select First(" + column(table) + ") as a, Last(" + column(table) + ") as b" + from;
      case 2: {
        // Sums of floats depend on the order of the rows, which is the engine's own: whole numbers do not.
        const std::string group = column(table);
        const ColumnInfo* whole = nullptr;
        for (const ColumnInfo& each : table.columns)
          if (each.type == FieldType::Integer) whole = &each;
        const std::string sum = whole ? ", Sum(" + nameOf(table, *whole) + ") as s" : "";
        return "select " + group + ", Count(*) as n" + sum + from + " group by " + group;
      }
      case 3:
        return "select *" + from + " order by " + column(table) + (chance(2) ? " desc" : "");
      default:
        return "select *" + from;
    }
  }

 private:
  std::string text() {
    static const char* const parts[] = {"é",  "É",  "e", "E",  "œ", "Œ", "ÿ",  "Ÿ",  "ς", "Σ",
                                        "ß",  "ẞ",  "İ", "ı",  "Ж", "ж", "%",  "_",  " ", "'",
                                        "\\", "\"", "a", "10", "9", "😀", "\t", "\n", "ſ", "µ"};
    std::string text;
    for (std::size_t left = below(5); left > 0; --left) text += of(parts);
    return text;
  }
  Value value(FieldType type) {
    static const double numbers[] = {0, 0.1, 1e300, -1e-300, 12.25, -3, 1.0 / 3, 1e15, 123456.789};
    if (chance(5)) return {};
    switch (type) {
      case FieldType::Text:
        return text();
      case FieldType::Integer:
        return static_cast<std::int64_t>(below(12)) - 2;
      case FieldType::Float:
        return of(numbers);
      case FieldType::DateTime:
        return DateTime::fromMillis(static_cast<std::int64_t>(45000 + below(20)) * kMillisecondsPerDay +
                                    static_cast<std::int64_t>(below(3)) * 43'199'000);
      case FieldType::Blob:
        break;
    }
    return SharedBytes(std::make_shared<const Bytes>(below(4), std::uint8_t(below(256))));
  }

  static std::string nameOf(const TableInfo& table, const ColumnInfo& column) {
    return table.name + ".[" + column.name + ']';
  }
  std::string column(const TableInfo& table) {
    while (true)
      if (const ColumnInfo& found = table.columns[below(table.columns.size())]; found.type != FieldType::Blob)
        return nameOf(table, found);
  }
  std::string condition(const TableInfo& table) {
    static const char* const signs[] = {"=", "<>", "<", "<=", ">", ">="};
    const ColumnInfo& column = table.columns[below(table.columns.size())];
    const std::string name = nameOf(table, column);
    if (column.type == FieldType::Blob || chance(6)) return name + (chance(2) ? " is null" : " is not null");
    const auto word = [&] { return inQuotes(value(column.type).text()); };
    if (column.type == FieldType::Text && chance(2)) return name + " like " + inQuotes(text() + "%");
    switch (below(3)) {
      case 0:
        return name + " between " + word() + " and " + word();
      case 1:
        return "not (" + name + of(signs) + word() + ')';
      default:
        return name + of(signs) + word();
    }
  }
  std::string where(const TableInfo& table) {
    std::string all = condition(table);
    while (chance(3)) all += (chance(2) ? " and " : " or ") + condition(table);
    return all;
  }

  std::mt19937 random_;
};

/// What a step comes to: what it says, or its refusal. Of several texts that are too wide, engines name
/// whichever they look at first.
std::string outcome(const std::function<std::string()>& step) {
  try {
    return step();
  } catch (const Error& error) {
    const std::string sentence = error.what();
    return "! " + (sentence.find(" est trop long") == sentence.npos ? sentence : "a text too wide");
  }
}

std::string rowsOf(Store& store, const std::string& statement) {
  std::string all;
  for (const auto& row : read(store, statement)) {
    for (const Value& value : row) all += told(value) + " | ";
    all += '\n';
  }
  return all;
}

class Differential : public testing::TestWithParam<std::uint32_t> {};

TEST_P(Differential, AFileAndAServerGiveTheSameAnswers) {
  const StoreFile file;
  const Cluster cluster;
  const StoreFile line(cluster.address("cafe"));
  const auto here = file.open(), there = line.open();
  static const char* const tables[] = {"client",  "article", "commande", "relation_commande",
                                       "depence", "caisse"};
  Drawing draw(GetParam());
  int rows = 0, refusals = 0;
  const auto same = [&](const std::string& what, const std::function<std::string(Store&)>& step) {
    const std::string said = outcome([&] { return step(*here); });
    EXPECT_EQ(said, outcome([&] { return step(*there); })) << what;
    rows += static_cast<int>(std::ranges::count(said, '\n'));
    refusals += said.starts_with("! ");
  };
  for (int step = 0; step < 500; ++step) {
    const TableInfo& table = *here->catalog()->find(draw.of(tables));
    const FieldValues fields = draw.fields(table);
    const std::string update = draw.update(table), select = draw.select(table);
    switch (draw.below(8)) {
      case 0:
      case 1:
      case 2:
        same("a row of " + table.name, [&](Store& store) {
          // What is refused costs a server the number of the row: only its place is the same.
          store.insert(table.name, fields);
          return "done";
        });
        break;
      case 3:
        same(update, [&](Store& store) {
          execute(store, update);
          return "done";
        });
        break;
      default:
        same(select, [&](Store& store) { return rowsOf(store, select); });
    }
  }
  EXPECT_GT(rows, 400);
  EXPECT_GT(refusals, 20);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Differential, testing::Values(1u, 2u, 3u));

}  // namespace
}  // namespace tavoline::test
