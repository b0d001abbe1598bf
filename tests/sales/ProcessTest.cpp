// Workstations as processes: one that is killed, and two on one store. Each process makes an application of
// its own, as an application with its threads does not survive a fork.

#include <sys/wait.h>
#include <unistd.h>

#include <QtWidgets/QApplication>
#include <csignal>
#include <fstream>

#include "sales/Life.h"
#include "support/StoreFile.h"
#include "support/StoreProcess.h"
#include "toolkit/theme/Theme.h"

namespace tavoline {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using Turns = test::StoreProcess::Turns;

const char Held[] = "says \"cette table est reserver par un autre utilisateur , merci de pationter\"\n";

/// Where the workstations of a test make their folder.
class Home {
 public:
  Home() { ::setenv("TMPDIR", folder_.path().c_str(), 1); }
  ~Home() {
    fs::current_path(before_);
    ::setenv("TMPDIR", temporary_.c_str(), 1);
  }
  Home(const Home&) = delete;
  Home& operator=(const Home&) = delete;
  /// The folder of the only workstation that made a store.
  fs::path store() const {
    for (const auto& entry : fs::directory_iterator(folder_.path()))
      if (fs::exists(entry.path() / "BDD.mdb")) return entry.path();
    throw std::runtime_error("no store");
  }

 private:
  std::string temporary_ = fs::temp_directory_path();
  fs::path before_ = fs::current_path();
  test::TemporaryFolder folder_;
};

class Application {
 public:
  Application() {
    application_.setQuitOnLastWindowClosed(false);
    applyTheme(application_);
  }

 private:
  int argc_ = 1;
  char name_[12] = "workstation";
  char* argv_[2] = {name_, nullptr};
  QApplication application_{argc_, argv_};
};

/// In another process: its failures end it, so that the test is told.
void endTurn() {
  if (::testing::Test::HasFailure()) throw std::runtime_error("an expectation failed");
}
void endTurn(Turns& turns) {
  endTurn();
  turns.next();
}

/// The store before the gesture, and after each of its writes.
std::vector<std::string> statesOf(const Gesture& gesture) {
  test::TemporaryFolder folder;
  const fs::path file = folder.path() / "states";
  const int status = test::runElsewhere([&] {
    const Application application;
    Life life;
    life.play(gesture.before);
    std::ofstream states(file);
    states << life.contents() << std::endl;
    life.afterWrite = [&] { states << life.contents() << std::endl; };
    life.play(gesture.run + "\n" + gesture.finish);
    endTurn();
  });
  EXPECT_EQ(status, 0);
  std::vector<std::string> states;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) states.push_back(line);
  return states;
}

TEST(ProcessTest, AKilledProgramLeavesExactlyItsEarlierWrites) {
  for (const Gesture& gesture : Gestures) {
    const std::vector<std::string> states = statesOf(gesture);
    ASSERT_EQ(states.size(), std::size_t(gesture.writes) + 1);
    for (int n = 0; n <= gesture.writes; ++n) {
      SCOPED_TRACE(std::string(gesture.name) + ", killed after " + std::to_string(n) + " writes");
      const Home home;
      const int status = test::runElsewhere([&] {
        const auto die = [] { ::kill(::getpid(), SIGKILL); };
        const Application application;
        Life life;
        life.play(gesture.before);
        if (n == 0) life.atWrite(1, die);
        life.afterWrite = [die, left = n]() mutable {
          if (--left == 0) die();
        };
        life.play(gesture.run);
      });
      ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
      fs::current_path(home.store());
      const TDM reopened(Store::open(TDM::ConnectionString));
      sqlite::Connection side = test::sideDoor("BDD.mdb");
      EXPECT_EQ(side.text("pragma integrity_check"), "ok");
      EXPECT_EQ(side.text(std::string("select ") + Contents), states[std::size_t(n)]);
    }
  }
}

void firstWorkstation(Turns& turns) {
  const Application application;
  Life life;
  life.play(kOrder + "tap Café");
  endTurn(turns);

  EXPECT_EQ(life.play("rows commande n_commande\nshow DBText9"), "1\nDBText9 \"9\"\n")
      << "the other's order is not seen before it is read again";
  EXPECT_THAT(life.play("tap Café\nshow DBText9\nrows commande n_commande"), EndsWith("DBText9 \"7\"\n1\n"))
      << "a tap reads the article again, and its own orders alone";
  life.play("tap Enregistrer\nin commandeF");
  endTurn(turns);

  EXPECT_EQ(life.play("tap T1\nrows commande n_commande"), Held + std::string("1, 2\n"))
      << "a tap on the map reads all again";
  endTurn(turns);

  EXPECT_THAT(life.play("tap T1" + kLines), EndsWith("2 | Café | 100 | 200\n1 | Thé | 80 | 80\n"));
  endTurn();
}

void secondWorkstation(const Home& home, Turns& turns) {
  const Application application;
  Life life(home.store());
  EXPECT_EQ(life.play("tap T1"), Held);
  // The number after the other's, and the stock less what both took.
  EXPECT_THAT(
      life.play("tap T2\nin Commande_avnF\nchoose DBLookupListBox1 1\ntap Café\nshow DBText3 DBText9"),
      EndsWith("DBText3 \"2\" hidden\nDBText9 \"8\"\n"));
  life.play("tap Enregistrer");
  endTurn(turns);

  EXPECT_THAT(life.play("tap commandeF.T1" + kLines), EndsWith("2 | Café | 100 | 200\n"))
      << "left on its table";
  life.play("tap Thé");
  endTurn(turns);

  life.play("tap Enregistrer");
  endTurn();
}

TEST(ProcessTest, TwoWorkstationsShareOneStore) {
  const Home home;
  test::StoreProcess first(firstWorkstation);
  test::StoreProcess second([&](Turns& turns) { secondWorkstation(home, turns); });
  first.turn();
  second.turn();
  first.turn();
  second.turn();
  first.turn();
}

}  // namespace
}  // namespace tavoline

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
