// What the tool leaves behind when it fails, dies, or is not alone.

#include "tools/store/Creation.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#include "data/value/Errors.h"
#include "support/StoreProcess.h"
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

TEST_F(Creation, APasswordIsAskedTwiceOrReadOrMadeAndNeverSeen) {
  const auto passwordOf = [&](const std::string& name) {
    return ask(file(name), "SELECT mot_pase FROM utilisateur");
  };
  std::vector<std::string> answers = {"4711", "4711", "4711", "4712"};
  const AskSecret answered = [&](const std::string&) {
    std::string answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  };
  EXPECT_EQ(tool({"create", file("asked")}, answered), 0);
  EXPECT_EQ(passwordOf("asked"), "4711");
  EXPECT_EQ(said.find("4711"), said.npos) << said;
  EXPECT_EQ(tool({"create", file("mistyped")}, answered), 2);
  EXPECT_FALSE(fs::exists(file("mistyped")));

  std::ofstream(file("secret")) << "0815\nmore";
  EXPECT_EQ(tool({"create", file("read"), "--password-file", file("secret")}), 0);
  EXPECT_EQ(passwordOf("read"), "0815");

  EXPECT_EQ(tool({"create", file("made")}), 0);
  const std::string made = passwordOf("made");
  EXPECT_EQ(made.size(), 6U);
  EXPECT_NE(said.find(made), said.npos);
  EXPECT_EQ(tool({"create", file("again")}), 0);
  EXPECT_NE(passwordOf("again"), made);
}

TEST_F(Creation, AMediumThatIsOnlyReadIsCheckedAndCopied) {
  const test::TemporaryFolder other;
  ASSERT_EQ(tool({"create", file(), "--password", "4711"}), 0) << said;
  fs::permissions(file(), fs::perms(0644));
  fs::permissions(folder.path(), fs::perms(0555));
  fs::permissions(other.path(), fs::perms(0777));
  const std::string copy = (other.path() / "copy.mdb").string();
  const int status = test::runElsewhere([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) throw std::runtime_error("no other user");
    if (tool({"check", file()}) != 0 || tool({"backup", file(), copy}) != 0) throw std::runtime_error(said);
  });
  fs::permissions(folder.path(), fs::perms(0755));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(tool({"check", copy}), 0) << said;
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
