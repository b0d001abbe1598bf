#include "shell/StartUp.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <map>

#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"
#include "tools/store/Creation.h"

namespace tavoline {
namespace {

class StartUpTest : public testing::Test {
 protected:
  ~StartUpTest() override { MenuF = nullptr, LoginF = nullptr; }

  static void put(const QByteArray& bytes) {
    QFile file("BDD.mdb");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
  }
  static std::map<QString, QByteArray> folder() {
    std::map<QString, QByteArray> files;
    for (const QString& name : QDir().entryList(QDir::Files | QDir::Hidden)) {
      QFile file(name);
      if (file.open(QIODevice::ReadOnly)) files[name] = file.readAll();
    }
    return files;
  }
  static bool start() { return startUp({makes(MenuF), makesDataModule(), makes(LoginF)}); }

  Workstation at;
};

TEST_F(StartUpTest, WithoutAWholeStoreItSaysSoAndTouchesNothing) {
  const auto altered = [](const char* sql) {
    tool::createStore("BDD.mdb");
    sqlite3* store = nullptr;
    EXPECT_EQ(sqlite3_open("BDD.mdb", &store), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(store, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    sqlite3_close(store);
  };
  const struct {
    const char* what;
    std::function<void()> prepare;
    const char* sentence;  // a part of the sentence
  } cases[] = {
      {"no file", [] {}, "introuvable"},
      {"an empty file", [] { put(""); }, "vide"},
      {"a foreign file", [] { put("%PDF-1.4 une facture"); }, "BDD.mdb"},
      {"a file of an earlier installation",
       [] { put(QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(600, '\0')); },
       "tavoline-store import"},
      {"another password", [] { tool::createStore("BDD.mdb", "autre"); }, "passe"},
      {"a table missing", [&] { altered("drop table caise"); }, "caise"},
      {"a column missing", [&] { altered("alter table operation rename column n_ to numero"); }, "n_"},
  };
  for (const auto& [what, prepare, sentence] : cases) {
    for (const auto& [name, bytes] : folder()) QFile::remove(name);
    prepare();
    const auto before = folder();
    at.answers({{testing::HasSubstr(sentence)}});
    EXPECT_FALSE(start()) << what;
    EXPECT_EQ(DM, nullptr) << what;
    EXPECT_TRUE(Forms::all().empty()) << what;
    EXPECT_TRUE(folder() == before) << what << ": something was created or changed";
  }
}

TEST_F(StartUpTest, StepsAreTakenInOrderUntilOneFails) {
  std::string taken;
  at.answers({{"Rien ne va plus."}});
  EXPECT_FALSE(
      startUp({[&] { taken += "a"; }, [&] { taken += "b"; },
               []() -> void { throw std::runtime_error("Rien ne va plus."); }, [&] { taken += "d"; }}));
  EXPECT_EQ(taken, "ab");
}

TEST_F(StartUpTest, TheMenuIsBoundThoughItIsMadeFirst) {
  at.sql("insert into operation (n_, nom) values (1, 'Premier')");
  ASSERT_TRUE(start());
  EXPECT_EQ(Forms::all().front(), MenuF);
  EXPECT_EQ(MenuF->DBText1->Caption(), "Premier");
}

}  // namespace
}  // namespace tavoline
