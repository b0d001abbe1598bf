#include "support/Killing.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QtWidgets/QApplication>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "support/Session.h"
#include "support/StoreProcess.h"
#include "toolkit/theme/Theme.h"

namespace tavoline::test {

namespace fs = std::filesystem;

Home::Home() {
  ::setenv("TMPDIR", folder_.path().c_str(), 1);
}

Home::~Home() {
  fs::current_path(before_);
  ::setenv("TMPDIR", temporary_.c_str(), 1);
}

fs::path Home::store() const {
  for (const auto& entry : fs::directory_iterator(folder_.path()))
    if (fs::exists(entry.path() / "BDD.mdb")) return entry.path();
  throw std::runtime_error("no store");
}

void withApplication(const std::function<void()>& body) {
  int argc = 1;
  char name[] = "workstation";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  applyTheme(application);
  body();
  if (::testing::Test::HasFailure()) throw std::runtime_error("an expectation failed");
}

namespace {

/// The store before the writes, and after each of them.
std::vector<std::string> statesOf(const Killing& killing) {
  TemporaryFolder folder;
  const fs::path file = folder.path() / "states";
  const int status = runElsewhere([&] {
    withApplication([&] {
      Session session;
      session.play(killing.before);
      std::ofstream states(file);
      const auto tell = [&] { states << session.at.value("select " + killing.contents) << std::endl; };
      tell();
      session.afterWrite = tell;
      session.play(killing.run + "\n" + killing.finish);
    });
  });
  EXPECT_EQ(status, 0);
  std::vector<std::string> states;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) states.push_back(line);
  return states;
}

int playAndDie(const Killing& killing, int writes) {
  return runElsewhere([&] {
    withApplication([&] {
      const auto die = [] { ::kill(::getpid(), SIGKILL); };
      Session session;
      session.play(killing.before);
      if (writes == 0) session.beforeWrite = die;
      session.afterWrite = [die, left = writes]() mutable {
        if (--left == 0) die();
      };
      session.play(killing.run);
    });
  });
}

}  // namespace

void killBetweenWrites(const Killing& killing, const std::function<void(int writes)>& left) {
  const std::vector<std::string> states = statesOf(killing);
  ASSERT_EQ(states.size(), std::size_t(killing.writes) + 1) << killing.name;
  for (int writes = 0; writes <= killing.writes; ++writes) {
    SCOPED_TRACE(killing.name + ", killed after " + std::to_string(writes) + " writes");
    const Home home;
    const int status = playAndDie(killing, writes);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    fs::current_path(home.store());
    {
      const TDM reopened(Store::open(TDM::ConnectionString));
      sqlite::Connection side = sideDoor("BDD.mdb");
      EXPECT_EQ(side.text("pragma integrity_check"), "ok");
      EXPECT_EQ(side.text("select " + killing.contents), states[std::size_t(writes)]);
    }
    if (left) left(writes);
  }
}

}  // namespace tavoline::test
