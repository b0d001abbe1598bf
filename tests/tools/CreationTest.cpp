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
