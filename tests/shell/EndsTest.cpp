// What leaves the process running, and what happens when nobody does anything.

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "shell/IdleWatch.h"
#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/Session.h"

namespace tavoline {
namespace {

TEST(Process, OnlyTheMenuEndsTheProcess) {
  Session session;
  session.play("start");
  QTimer::singleShot(0, MenuF, [] {
    LoginF->Close();
    QTimer::singleShot(0, MenuF, [] { QCoreApplication::exit(7); });
  });
  EXPECT_EQ(QCoreApplication::exec(), 7);
  EXPECT_TRUE(MenuF->isVisible());
}

TEST(Process, AChoreIsDoneAgainAfterEachRest) {
  Session session;
  session.play("start");
  int chores = 0;
  const IdleWatch idle([&] { ++chores; }, [] {}, 1);
  session.at.waitUntil([&] { return chores >= 2; });
}

}  // namespace
}  // namespace tavoline
