// The stores of earlier installations, written by another program: each arrives as it was written, or is
// refused whole.

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <csignal>
#include <functional>
#include <map>
#include <random>
#include <tuple>
#include <utility>

#include "data/schema/Schema.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "support/Cluster.h"
#include "tests/tools/ToolFixture.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/exchange/Import.h"
#include "tools/store/jet/JetSource.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kWhole = 0, kFailed = 1, kWithRemarks = 3;

std::string legacy(const std::string& name) {
  return std::string(TAVOLINE_LEGACY) + '/' + name;
}

/// What was put into a table: a text in quotes, \N for null, numbers, moments, a picture as digest:length.
struct Expected {
  std::vector<std::string> columns;
  std::vector<std::vector<std::string>> rows;
};

Expected expectedIn(const std::string& file) {
  Expected found;
  std::vector<std::string> row(1);
  bool quoted = false;
  for (const char c : test::bytesOf(file)) {
    if (c == '"') quoted = !quoted;
    if (quoted || (c != ',' && c != '\n')) {
      row.back() += c;
    } else if (c == ',') {
      row.emplace_back();
    } else {
      found.rows.push_back(std::exchange(row, std::vector<std::string>(1)));
    }
  }
  found.columns = found.rows.front();
  found.rows.erase(found.rows.begin());
  return found;
}

/// As the expectation writes it; a float by its bits, but for the sign of zero.
std::string told(const Value& value, bool isFloat) {
  if (value.isNull()) return "\\N";
  if (value.isDateTime()) {
    std::string moment = value.toDateTime().stored();
    moment[10] = 'T';
    return moment;
  }
  if (value.isBytes()) return sha256(*value.toBytes()) + ':' + std::to_string(value.toBytes()->size());
  if (isFloat) return std::to_string(std::bit_cast<std::uint64_t>(value.toFloat() + 0.0));
  if (value.isInteger()) return std::to_string(value.toInteger());
  std::string quoted;
  for (const char c : value.text()) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return '"' + quoted + '"';
}

std::string numberIn(const std::string& text, bool isFloat) {
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return isFloat ? std::to_string(std::bit_cast<std::uint64_t>(number + 0.0))
                 : std::to_string(static_cast<std::int64_t>(number));
}

class Legacy : public ToolTest {
 protected:
  /// What stands in the picture's wrapper, where there is one.
  static std::map<std::string, std::string> innerPictures() {
    std::map<std::string, std::string> inner;
    for (const auto& row : expectedIn(legacy("expected/legacy-small/pictures.csv")).rows)
      inner[row[0]] = row[1];
    return inner;
  }

  void expectArrived(const schema::Table& table, const std::string& folderOfIt) {
    const Expected expected = expectedIn(folderOfIt + '/' + foldName(table.name) + ".csv");
    const auto inner = innerPictures();
    sqlite::Connection store = observed(file());
    sqlite::Statement rows = store.prepare("SELECT * FROM \"" + std::string(table.name) + "\" ORDER BY rid");
    std::size_t row = 0;
    for (; rows.step(); ++row) {
      ASSERT_LT(row, expected.rows.size()) << table.name;
      for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const schema::Column& column = table.columns[i];
        const bool isFloat = column.type == FieldType::Float;
        const auto at = std::find_if(expected.columns.begin(), expected.columns.end(),
                                     [&](const std::string& name) { return sameName(name, column.name); });
        std::string wanted =
            at == expected.columns.end()
                ? "\\N"
                : expected.rows[row][static_cast<std::size_t>(at - expected.columns.begin())];
        if (inner.contains(wanted)) wanted = inner.at(wanted);
        if ((isFloat || column.type == FieldType::Integer) && wanted != "\\N")
          wanted = numberIn(wanted, isFloat);
        EXPECT_EQ(told(rows.value(static_cast<int>(i) + 1, column.type), isFloat), wanted)
            << table.name << '.' << column.name << " in row " << row + 1;
      }
    }
    EXPECT_EQ(row, expected.rows.size()) << table.name;
  }

  void expectArrived(const std::string& name, const std::string& folderOfIt) {
    EXPECT_EQ(tool({"import", legacy(name), file()}), kWithRemarks) << said;
    for (const schema::Table& table : schema::tables()) expectArrived(table, legacy(folderOfIt));
  }
};

TEST_F(Legacy, EveryValueOfEdgesPacksAndMovedRowsArrives) {
  expectArrived("legacy-small.mdb", "expected/legacy-small");
}

TEST_F(Legacy, APasswordThatMarksTheHeadIsNoHindrance) {
  expectArrived("legacy-password.mdb", "expected/legacy-small");
}

TEST_F(Legacy, OtherTypesNamesAndOrdersOfColumnsArriveByValue) {
  expectArrived("legacy-other-hand.mdb", "expected/legacy-other-hand");
  EXPECT_THAT(said, HasSubstr("« ANCIEN_CODE »"));
  EXPECT_THAT(said, HasSubstr("« observation »"));
}

constexpr std::size_t kPage = 4096;

/// Random bytes in the place of a page, or of what stands behind its head.
void makeNoise(std::string& file, std::size_t page, std::size_t head = 0) {
  std::mt19937 random(static_cast<unsigned>(page));
  for (std::size_t i = page * kPage + head; i < (page + 1) * kPage; ++i)
    file[i] = static_cast<char>(random() % 256);
}

TEST_F(Legacy, ABrokenFileIsRefusedInOneSentenceAndLeavesNothing) {
  using namespace std::string_literals;
  const std::string whole = test::bytesOf(legacy("broken/whole.mdb"));
  const auto put = [](std::string& file, std::size_t at, const std::string& bytes) {
    file.replace(at, bytes.size(), bytes);
  };
  const struct {
    const char *name, *sentence;
    std::function<void(std::string& file)> spoil;
  } broken[] = {
      {"a text", "n'est pas une base Jet", [](auto& file) { file = "Ceci n'est pas une base.\n"; }},
      {"nothing", "est vide", [](auto& file) { file.clear(); }},
      {"another program's", "aucune des tables attendues",
       [](auto& file) { file = test::bytesOf(legacy("broken/another-program.mdb")); }},
      {"cut at a page", "est abîmée", [](auto& file) { file.resize(105 * kPage); }},
      {"cut to one kilobyte", "est abîmée", [](auto& file) { file.resize(1024); }},
      {"cut within a page", "est abîmée", [](auto& file) { file.resize(105 * kPage + 1000); }},
      // Each part of a memo or a picture tells the page and the row of the next one: of its own.
      {"a loop in a memo", "tourne en rond", [&](auto& file) { put(file, 69 * kPage + 21, "\x45"s); }},
      {"a loop in a picture", "tourne en rond", [&](auto& file) { put(file, 63 * kPage + 21, "\x3F"s); }},
      {"a loop of nothing in a memo", "est abîmée",
       [&](auto& file) {
         put(file, 69 * kPage + 14, "\xFC\x0F"s);
         put(file, 70 * kPage - 4, "\0\x45\0\0"s);
       }},
      {"noise behind a page's head", "est abîmée", [](auto& file) { makeNoise(file, 89, 64); }},
      {"noise in the catalogue", "aucune des tables attendues", [](auto& file) { makeNoise(file, 14); }},
      {"noise in a definition", "« commande »", [](auto& file) { makeNoise(file, 43, 8); }},
      {"noise in a map", "« commande »", [](auto& file) { makeNoise(file, 44, 14); }},
      {"noise in rows", "« relation_commande »", [](auto& file) { makeNoise(file, 87); }},
      {"of another format", "format 97", [&](auto& file) { put(file, 20, "\0"s); }},
      {"of a later version", "version 2007", [&](auto& file) { put(file, 4, "Standard ACE DB\0\2"s); }}};
  for (const auto& [name, sentence, spoil] : broken) {
    const test::TemporaryFolder beside;
    const std::string old = (beside.path() / "old.mdb").string();
    std::string bytes = whole;
    spoil(bytes);
    std::ofstream(old, std::ios::binary) << bytes;
    EXPECT_EQ(tool({"import", old, file()}), kFailed) << name;
    EXPECT_THAT(said, HasSubstr(sentence)) << name;
    EXPECT_THAT(folder.contents(), IsEmpty()) << name;
    EXPECT_TRUE(test::bytesOf(old) == bytes) << name;
  }
}

TEST_F(Legacy, ARefusedRowIsNamedAndStrictlyStopsAll) {
  const std::tuple<std::string, std::string, std::string, int> refused[] = {
      {"too-wide.mdb", "client, code_client=C13 : « nom_client » a 60 caractères", "client", 12},
      {"key-twice.mdb", "commande, n_commande=5 : cette valeur", "commande", 30}};
  for (const auto& [name, sentence, table, rows] : refused) {
    EXPECT_EQ(tool({"import", legacy("broken/" + name), file(), "--strict"}), kFailed) << name;
    EXPECT_THAT(said, HasSubstr(sentence));
    EXPECT_EQ(tool({"import", legacy("broken/" + name), file(), "--dry-run"}), kWithRemarks) << name;
    EXPECT_THAT(said, HasSubstr(sentence));
    EXPECT_THAT(folder.contents(), IsEmpty()) << "neither wrote anything";

    EXPECT_EQ(tool({"import", legacy("broken/" + name), file(name)}), kWithRemarks) << name;
    EXPECT_THAT(said, HasSubstr(sentence));
    EXPECT_THAT(test::bytesOf(file(name.substr(0, name.find('.')) + ".import-2026-11-22-203000.txt")),
                HasSubstr(sentence));
    EXPECT_EQ(ask(file(name), "SELECT count(*) FROM " + table), std::to_string(rows))
        << "nothing but that row";
    for (const auto& entry : fs::directory_iterator(folder.path())) fs::remove(entry);
  }
}

/// Gives a few rows, then does what a test wants in the middle.
class Halfway : public RowSource {
 public:
  explicit Halfway(std::function<void()> then) : then_(std::move(then)) {}
  void read(RowReceiver& receiver) override {
    const schema::Table& table = schema::table("type");
    receiver.table(table, {&table.columns[0], &table.columns[1]});
    std::vector<Value> row = {1, "Boissons"};
    receiver.row(row);
    then_();
  }
  bool wrapsPictures() const override { return false; }

 private:
  std::function<void()> then_;
};

TEST_F(Legacy, KilledInTheMiddleNothingStandsUnderTheName) {
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    Halfway source([] { ::raise(SIGKILL); });
    importRows(source, "old", file(), {});
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_FALSE(fs::exists(file()));
  EXPECT_EQ(tool({"import", legacy("broken/whole.mdb"), file()}), kWithRemarks) << said;
  EXPECT_EQ(folder.contents().size(), 2U) << "the store and its report; what was left is cleared";
}

TEST_F(Legacy, ASourceThatEndsEarlyMakesNoStore) {
  Halfway source([] {});
  EXPECT_THROW(importRows(source, "old", file(), {}), StoreError);
  EXPECT_THAT(folder.contents(), IsEmpty());
}

/// Writes to a file as soon as rows come from it.
class Meddling : public RowReceiver {
 public:
  explicit Meddling(std::string path) : path_(std::move(path)) {}
  void expect(std::int64_t) override {}
  void table(const schema::Table&, const Columns&) override {}
  void row(std::vector<Value>&) override {
    std::ofstream(path_, std::ios::binary | std::ios::app) << std::string(4096, '\0');
  }
  void remark(const std::string&) override {}

 private:
  std::string path_;
};

TEST_F(Legacy, AFileThatChangesWhileItIsReadIsNotTaken) {
  std::ofstream(file("old.mdb"), std::ios::binary) << test::bytesOf(legacy("broken/whole.mdb"));
  jet::JetSource source(file("old.mdb"));
  Meddling receiver(file("old.mdb"));
  EXPECT_THROW(source.read(receiver), StoreError);
}

/// Every file of a folder but the moment it was written at.
std::map<std::string, std::string> filesOf(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::string text = test::bytesOf(entry.path());
    if (entry.path().filename() == "tavoline.json") text.erase(text.find("\"written\""), 40);
    files[entry.path().lexically_relative(folder)] = text;
  }
  return files;
}

TEST_F(Legacy, AFolderOfTablesComesBackAsTheSameStore) {
  EXPECT_EQ(tool({"import", legacy("legacy-small.mdb"), file("1.mdb")}), kWithRemarks);
  // Whatever a spreadsheet would run, in itself or behind what some country's takes for the end of a cell.
  plant(file("1.mdb"),
        "INSERT INTO type (code, Type_Produit) VALUES (901, '=1+1'), (902, '''=1+1'), (903, '+33'), "
        "(904, 'a;=1+1'), (905, ' @x'), (906, '''''-1'), (907, 'l''eau'), (908, char(9) || '=1'), "
        "(909, '-'), (910, char(10) || '=1'), (911, 'a;''b'), (912, '\"=1'), (913, '＝1')");
  EXPECT_EQ(tool({"export", file("1.mdb"), file("folder")}), kWhole) << said;
  EXPECT_EQ(tool({"import", file("folder"), file("2.mdb")}), kWhole) << said;
  EXPECT_EQ(tool({"export", file("2.mdb"), file("again")}), kWhole) << said;
  EXPECT_EQ(filesOf(file("again")), filesOf(file("folder"))) << "digests of the tables, and all files";
  EXPECT_EQ(ask(file("2.mdb"), "SELECT group_concat(Type_Produit) FROM type WHERE code > 900"),
            ask(file("1.mdb"), "SELECT group_concat(Type_Produit) FROM type WHERE code > 900"));
  const std::string types = test::bytesOf(file("folder/type.csv"));
  for (const std::string begins : {",\"", ";", "\n", "\t"})
    for (const std::string sign : {"=", "+", "@"})
      EXPECT_EQ(types.find(begins + sign), types.npos) << begins << sign;
  EXPECT_EQ(types.find(",\"-"), types.npos) << "a minus may only begin a number";
}

TEST_F(Legacy, AServerHoldsWhatAFileHolds) {
  const test::Cluster cluster;
  std::ofstream(file("server.mdb")) << cluster.address("ancienne") << '\n';
  EXPECT_EQ(tool({"import", legacy("legacy-small.mdb"), file("server.mdb")}), kWithRemarks) << said;
  EXPECT_EQ(tool({"import", legacy("legacy-small.mdb"), file("1.mdb")}), kWithRemarks) << said;
  EXPECT_EQ(tool({"export", file("server.mdb"), file("there")}), kWhole) << said;
  EXPECT_EQ(tool({"export", file("1.mdb"), file("here")}), kWhole) << said;
  EXPECT_EQ(filesOf(file("there"))["tavoline.json"], filesOf(file("here"))["tavoline.json"]);
}

TEST_F(Legacy, AFolderThatIsNotWholeIsRefused) {
  EXPECT_EQ(tool({"create", file("1.mdb")}), kWhole);
  const std::tuple<std::string, std::string, std::string> spoiled[] = {
      {"tavoline.json", "", "illisible"},
      {"tavoline.json", "{\"format\": 2}", "plus récente"},
      {"tavoline.json", "{\"format\": 1, \"tables\": []}", "il y manque la table"},
      {"TVA.csv", "tva,utilisation\r\n20,\"OUI\"\r\n", "n'est plus tel"},
      {"TVA.csv", "tva,utilisation\r\n19,\"OUI\r\n", "lisible"},
      {"utilisateur.csv", "image\r\nimages/../../../etc/passwd\r\n", "n'est plus tel"}};
  for (const auto& [name, content, sentence] : spoiled) {
    EXPECT_EQ(tool({"export", file("1.mdb"), file("folder")}), kWhole) << said;
    std::ofstream(file("folder/" + name), std::ios::binary | std::ios::trunc) << content;
    EXPECT_EQ(tool({"import", file("folder"), file()}), kFailed) << name << ' ' << content;
    EXPECT_THAT(said, HasSubstr(sentence));
    EXPECT_FALSE(fs::exists(file()));
    fs::remove_all(file("folder"));
  }
}

}  // namespace
}  // namespace tavoline::tool
