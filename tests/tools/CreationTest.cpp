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
  const auto fill = [&](Filler&) { std::ofstream(file()) << "another's"; };
  EXPECT_THROW(createStore(file(), "secret", fill), StoreError);
  EXPECT_EQ(test::bytesOf(file()), "another's");
  EXPECT_EQ(folder.contents().size(), 1U);

  fs::create_symlink("nowhere", file("link"));
  EXPECT_EQ(tool({"create", file("link")}), 1);
  EXPECT_EQ(folder.contents().size(), 2U);
}

TEST_F(Creation, AFailureLeavesNothing) {
  EXPECT_THROW(createStore(file(), "secret", [](Filler&) { throw std::runtime_error("no more"); }),
               std::runtime_error);
  EXPECT_THROW(createStore(file(), "secret",
                           [](Filler& filler) {
                             filler.inserter("type", {"code"}).run(1);
                             filler.inserter("type", {"code"}).run(1);
                           }),
               StoreError);
  EXPECT_THAT(folder.contents(), IsEmpty());
}

TEST_F(Creation, AKilledToolLeavesNothingUnderTheName) {
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    createStore(file(), "secret", [](Filler& filler) {
      filler.inserter("type", {"code"}).run(1);
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

}  // namespace
}  // namespace tavoline::tool
