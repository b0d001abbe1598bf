#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "data/value/Clock.h"
#include "shell/IdleWatch.h"
#include "shell/ShellTest.h"

namespace tavoline {
namespace {

class EndsTest : public ShellTest {
 protected:
  void SetUp() override {
    Clock::set([] { return DateTime::of(2031, 5, 6, 17, 8, 9); });
    at.sql("insert into Table_ (ID_table, \"table\", control) values (1, 'T1', 'close')");
  }
  void TearDown() override { Clock::set({}); }
  /// Runs the event loop as the process does, with one thing happening in it; its status once it has ended.
  static int run(std::function<void()> event) {
    QTimer::singleShot(0, MenuF, std::move(event));
    return QCoreApplication::exec();
  }
  std::string leaving() { return at.value("select date_sortie || ' | ' || heure_sortie from operation"); }
};

TEST_F(EndsTest, FermerOpensTheTablesAndWritesNoLeavingTime) {
  open();
  logIn("boss", "1");
  EXPECT_EQ(run([] { MenuF->Fermer1->trigger(); }), 0);
  EXPECT_EQ(at.value("select control from Table_"), "open");
  EXPECT_EQ(leaving(), "");
}

TEST_F(EndsTest, ClosingTheWindowWritesTheLeavingTimeOfASession) {
  open();
  logIn("boss", "1");
  EXPECT_EQ(run([] { MenuF->close(); }), 0);
  EXPECT_EQ(leaving(), "2031-05-06 00:00:00.000 | 1899-12-30 17:08:09.000");
  EXPECT_EQ(at.value("select control from Table_"), "close") << "the locks are left alone on this way out";
}

TEST_F(EndsTest, ClosingTheWindowWithoutASessionWritesNothing) {
  at.sql("insert into operation (n_, code_utilisateur) values (1, 'omar')");
  open();
  EXPECT_EQ(run([] { MenuF->close(); }), 0);
  logIn("boss", "1");
  EXPECT_EQ(run([] {
              MenuF->ChangerUtilisateur1->trigger();
              MenuF->close();
            }),
            0);
  EXPECT_EQ(at.value("select count(*) from operation where date_sortie is null"), "2");
}

TEST_F(EndsTest, OnlyTheMenuEndsTheProcess) {
  open();
  EXPECT_EQ(run([] {
              LoginF->Close();
              QTimer::singleShot(0, MenuF, [] { QCoreApplication::exit(7); });
            }),
            7);
  EXPECT_TRUE(MenuF->isVisible());
}

TEST_F(EndsTest, AChoreIsDoneAgainAfterEachRest) {
  open();
  int chores = 0;
  const IdleWatch idle([&] { ++chores; }, 1);
  at.waitUntil([&] { return chores >= 2; });
}

}  // namespace
}  // namespace tavoline
