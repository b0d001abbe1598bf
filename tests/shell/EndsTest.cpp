// The ways out of the process, and what happens when nobody does anything.

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "shell/IdleWatch.h"
#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/Session.h"

namespace tavoline {
namespace {

class EndsTest : public testing::Test {
 protected:
  EndsTest() {
    session.play(
        "sql insert into utilisateur (login, mot_pase, role) values ('boss', '1', 'Admin')\n"
        "sql insert into Table_ (ID_table, control) values (1, 'close')\n"
        "start");
  }
  /// Runs the event loop as the process does, with some steps in it; its status once it has ended.
  int run(const std::string& steps) {
    QTimer::singleShot(0, MenuF, [this, steps] { session.play(steps); });
    return QCoreApplication::exec();
  }
  /// The lock of the table, and the leaving times of the sessions.
  std::string left() {
    return session.play("stored control from Table_\nstored date_sortie, heure_sortie from operation");
  }

  Session session;
};

TEST_F(EndsTest, FermerOpensTheTablesAndWritesNoLeavingTime) {
  session.play("login boss 1");
  EXPECT_EQ(run("tap Fermer1"), 0);
  EXPECT_EQ(left(), "open\n- | -\n");
}

TEST_F(EndsTest, ClosingTheWindowWritesTheLeavingTimeOfASessionAndLeavesTheLocks) {
  session.play("login boss 1");
  EXPECT_EQ(run("clock 06/05/2031 17:08:09\nleave"), 0);
  EXPECT_EQ(left(), "close\n2031-05-06 00:00:00.000 | 1899-12-30 17:08:09.000\n");
}

TEST_F(EndsTest, ClosingTheWindowWithoutASessionWritesNothing) {
  session.play("login boss 1\ntap ChangerUtilisateur1");
  QTimer::singleShot(0, MenuF, [] { MenuF->close(); });
  EXPECT_EQ(QCoreApplication::exec(), 0);
  EXPECT_EQ(left(), "close\n- | -\n");
}

TEST_F(EndsTest, OnlyTheMenuEndsTheProcess) {
  QTimer::singleShot(0, MenuF, [] {
    LoginF->Close();
    QTimer::singleShot(0, MenuF, [] { QCoreApplication::exit(7); });
  });
  EXPECT_EQ(QCoreApplication::exec(), 7);
  EXPECT_TRUE(MenuF->isVisible());
}

TEST_F(EndsTest, AChoreIsDoneAgainAfterEachRest) {
  int chores = 0;
  const IdleWatch idle([&] { ++chores; }, 1);
  session.at.waitUntil([&] { return chores >= 2; });
}

}  // namespace
}  // namespace tavoline
