#include "shell/StartUp.h"

#include "shell/MenuU.h"
#include "support/Workstation.h"

namespace tavoline {
namespace {

TEST(StartUp, WithoutAStoreItSaysSoAndMakesNothing) {
  Workstation at;
  std::filesystem::remove("BDD.mdb");
  at.answers({{testing::HasSubstr("introuvable")}});
  EXPECT_FALSE(startUp({makes(MenuF), makesDataModule()}));
  MenuF = nullptr;
  EXPECT_EQ(DM, nullptr);
  EXPECT_TRUE(Forms::all().empty());
  EXPECT_TRUE(std::filesystem::is_empty(at.folder()));
}

TEST(StartUp, AStoreOfAnOlderVersionIsToldOf) {
  Workstation at;
  at.sql("drop table tavoline_ecritures");
  at.answers({{testing::HasSubstr("tavoline-store upgrade BDD.mdb")}});
  EXPECT_TRUE(startUp({makesDataModule()}));
}

TEST(StartUp, StepsAreTakenInOrderUntilOneFails) {
  Workstation at;
  std::string taken;
  at.answers({{"Rien ne va plus."}});
  EXPECT_FALSE(
      startUp({[&] { taken += "a"; }, [&] { taken += "b"; },
               []() -> void { throw std::runtime_error("Rien ne va plus."); }, [&] { taken += "d"; }}));
  EXPECT_EQ(taken, "ab");
}

}  // namespace
}  // namespace tavoline
