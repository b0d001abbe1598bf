// What the tool leaves behind when it fails, dies, or is not alone.

#include "tools/store/Creation.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "data/value/Errors.h"
#include "tests/tools/ToolFixture.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using Creation = ToolTest;

TEST_F(Creation, ANameTakenMeanwhileIsNotReplaced) {
  const auto fill = [&](Database&) { std::ofstream(file()) << "another's"; };
  EXPECT_THROW(createStore(file(), "secret", fill), StoreError);
  EXPECT_EQ(test::bytesOf(file()), "another's");
  EXPECT_EQ(folder.contents().size(), 1U);

  fs::create_symlink("nowhere", file("link"));
  EXPECT_EQ(tool({"create", file("link")}), 1);
  EXPECT_EQ(folder.contents().size(), 2U);
}

TEST_F(Creation, AFailureLeavesNothing) {
  EXPECT_THROW(createStore(file(), "secret", [](Database&) { throw std::runtime_error("no more"); }),
               std::runtime_error);
  EXPECT_THROW(
      createStore(file(), "secret",
                  [](Database& database) { database.execute("INSERT INTO type (code) VALUES (1), (1)"); }),
      StoreError);
  EXPECT_THAT(folder.contents(), IsEmpty());
}

TEST_F(Creation, AKilledToolLeavesNothingUnderTheName) {
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    createStore(file(), "secret", [](Database& database) {
      database.execute("INSERT INTO type (code) VALUES (1)");
      ::raise(SIGKILL);
    });
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_FALSE(fs::exists(file()));
  EXPECT_EQ(tool({"create", file()}), 0) << said;
  EXPECT_EQ(folder.contents().size(), 1U) << "the next run clears what was left";
}

TEST_F(Creation, ABackupAndACheckHoldWhatIsCommittedWhileAWorkstationWrites) {
  ASSERT_EQ(tool({"create", file()}), 0);
  Database workstation(file(), Database::Mode::Create);
  workstation.execute("INSERT INTO type (code, Type_Produit) VALUES (1, 'Boissons')");
  workstation.execute("BEGIN IMMEDIATE; INSERT INTO type (code, Type_Produit) VALUES (2, 'Glaces')");
  const std::string store = test::bytesOf(file()), log = test::bytesOf(file() + "-wal");
  ASSERT_EQ(tool({"backup", file(), file("copy.mdb")}), 0) << said;
  EXPECT_EQ(tool({"check", file()}), 0) << said;
  EXPECT_EQ(test::bytesOf(file()) + test::bytesOf(file() + "-wal"), store + log);
  workstation.execute("COMMIT");

  EXPECT_EQ(ask(file("copy.mdb"), "SELECT group_concat(Type_Produit) FROM type"), "Boissons");
  EXPECT_EQ(ask(file(), "SELECT count(*) FROM type"), "2");
  EXPECT_EQ(tool({"check", file("copy.mdb")}), 0) << said;
  EXPECT_FALSE(fs::exists(file("copy.mdb-wal")));
}

TEST_F(Creation, ACheckFindsDamagedPagesAndOtherSystemsFiles) {
  ASSERT_EQ(tool({"generate", file(), "--orders", "300"}), 0);
  std::fstream store(file(), std::ios::binary | std::ios::in | std::ios::out);
  store.seekp(static_cast<std::streamoff>(fs::file_size(file()) / 2 / 4096 * 4096));
  store << std::string(4096, '\xff');
  store.close();
  EXPECT_EQ(tool({"check", file()}), 1);
  EXPECT_THAT(said, HasSubstr("abîmé"));

  std::ofstream(file("jet"), std::ios::binary) << std::string("\0\1\0\0Standard Jet DB\0", 20);
  EXPECT_EQ(tool({"check", file("jet")}), 1);
  EXPECT_THAT(said, HasSubstr("Jet"));
}

TEST_F(Creation, TheSeedDecidesTheHistory) {
  const auto history = [&](const std::string& name, const char* seed) {
    EXPECT_EQ(tool({"generate", file(name), "--orders", "60", "--seed", seed}), 0) << said;
    return ask(file(name), "SELECT group_concat(date_commande || tcc) FROM commande");
  };
  const std::string first = history("1", "4");
  EXPECT_EQ(history("2", "4"), first);
  EXPECT_NE(history("3", "5"), first);
}

// What the tests make for themselves is what the tool makes.
TEST_F(Creation, OneListOfDefinitionsMakesTheSameStore) {
  createStore(file());
  Database other(file("other.mdb"), Database::Mode::Create);
  for (const std::string& sql : schema::sqliteDefinitions()) other.execute(sql);
  const char* definitions =
      "SELECT group_concat(sql, ';') FROM (SELECT sql FROM sqlite_schema ORDER BY name)";
  EXPECT_EQ(other.text(definitions), ask(file(), definitions));
  EXPECT_EQ(other.text("PRAGMA application_id"), ask(file(), "PRAGMA application_id"));
}

}  // namespace
}  // namespace tavoline::tool
