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

TEST_F(Creation, MakesAWholeStoreWithItsFirstRows) {
  ASSERT_EQ(tool({"create", file()}), 0) << said;
  EXPECT_THAT(said, HasSubstr("login 10, mot de passe 1010 (Admin)"));
  EXPECT_EQ(tool({"check", file()}), 0) << said;
  EXPECT_EQ(ask(file(), "SELECT login || mot_pase || role FROM utilisateur"), "101010Admin");
  EXPECT_EQ(ask(file(), "SELECT tva || utilisation FROM TVA"), "19.0OUI");
  EXPECT_EQ(ask(file(), "SELECT valeur FROM tavoline_store WHERE cle = 'mot_de_passe'"),
            schema::kStorePassword);
  EXPECT_EQ(ask(file(), "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(content().size(), 1U) << "something was left beside the store";

  ASSERT_EQ(
      tool({"create", file("2.mdb"), "--login=7", "--password", "", "--nom", "O'Neil", "--role", "KeyUser"}),
      0);
  EXPECT_EQ(ask(file("2.mdb"), "SELECT login || mot_pase || nom || role FROM utilisateur"), "7O'NeilKeyUser");
}

TEST_F(Creation, NeverTouchesWhatStandsUnderTheName) {
  std::ofstream(file("text")) << "notes";
  std::ofstream(file("empty")).close();
  fs::create_directory(file("folder"));
  fs::create_symlink("nowhere", file("link"));
  const auto before = content();
  for (const char* name : {"text", "empty", "folder", "link"}) {
    EXPECT_EQ(tool({"create", file(name)}), 1) << name;
    EXPECT_THAT(said, HasSubstr("existe déjà"));
  }
  EXPECT_EQ(tool({"create", file("no/such/folder.mdb")}), 1);
  EXPECT_EQ(content(), before);
}

TEST_F(Creation, ANameTakenMeanwhileIsNotReplaced) {
  const auto fill = [&](Database&) { std::ofstream(file()) << "another's"; };
  EXPECT_THROW(createStore(file(), "secret", fill), StoreError);
  EXPECT_EQ(bytes(file()), "another's");
  EXPECT_EQ(content().size(), 1U);
}

TEST_F(Creation, AFailureLeavesNothing) {
  EXPECT_THROW(createStore(file(), "secret", [](Database&) { throw std::runtime_error("no more"); }),
               std::runtime_error);
  EXPECT_THROW(
      createStore(file(), "secret",
                  [](Database& database) { database.execute("INSERT INTO type (code) VALUES (1), (1)"); }),
      StoreError);
  EXPECT_THAT(content(), IsEmpty());
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
  EXPECT_EQ(content().size(), 1U) << "the next run clears what was left";
}

TEST_F(Creation, AWrongCallSaysSoAndDoesNothing) {
  const std::vector<std::vector<std::string>> calls = {
      {},
      {"destroy", file()},
      {"create"},
      {"create", file(), file("2")},
      {"create", file(), "--login"},
      {"create", file(), "--login", "12345"},
      {"create", file(), "--login", ""},
      {"create", file(), "--role", "Chef"},
      {"create", file(), "--colour", "red"},
      {"demo", file(), "--orders", "5"},
      {"generate", file()},
      {"generate", file(), "--orders", "many"},
      {"generate", file(), "--orders", "-1"},
      {"generate", file(), "--orders", "5x"},
      {"generate", file(), "--orders", "5", "--pictures=yes"},
      {"check"},
      {"backup", file()}};
  for (const auto& call : calls) EXPECT_EQ(tool(call), 2) << testing::PrintToString(call);
  EXPECT_THAT(said, HasSubstr("--help"));
  EXPECT_THAT(content(), IsEmpty());
}

}  // namespace
}  // namespace tavoline::tool
