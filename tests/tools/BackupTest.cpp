#include "tools/store/Backup.h"

#include <gmock/gmock.h>

#include "tests/tools/ToolFixture.h"
#include "tools/store/Creation.h"

namespace tavoline::tool {
namespace {

using testing::HasSubstr;
using Backup = ToolTest;

TEST_F(Backup, CopiesWhatIsCommittedWhileAWorkstationWrites) {
  ASSERT_EQ(tool({"create", file()}), 0);
  Database workstation(file(), Database::Mode::Create);
  workstation.execute("INSERT INTO type (code, Type_Produit) VALUES (1, 'Boissons')");
  workstation.execute("BEGIN IMMEDIATE; INSERT INTO type (code, Type_Produit) VALUES (2, 'Glaces')");

  ASSERT_EQ(tool({"backup", file(), file("copy.mdb")}), 0) << said;
  workstation.execute("COMMIT");

  EXPECT_EQ(ask(file("copy.mdb"), "SELECT group_concat(Type_Produit) FROM type"), "Boissons");
  EXPECT_EQ(ask(file(), "SELECT count(*) FROM type"), "2");
  EXPECT_EQ(tool({"check", file("copy.mdb")}), 0) << said;
  EXPECT_FALSE(std::filesystem::exists(file("copy.mdb-wal")));
}

TEST_F(Backup, RefusesATargetThatStandsAndASourceThatIsNoStore) {
  ASSERT_EQ(tool({"create", file()}), 0);
  std::ofstream(file("yesterday.mdb")) << "kept";
  plant(file("other.db"), "CREATE TABLE t (a)");
  const auto before = content();
  struct {
    const char* from;
    const char* to;
    const char* why;
  } const refused[] = {{"BDD.mdb", "yesterday.mdb", "existe déjà"},
                       {"BDD.mdb", "BDD.mdb", "existe déjà"},
                       {"other.db", "copy.mdb", "pas une base Tavoline"},
                       {"yesterday.mdb", "copy.mdb", "pas une base SQLite"},
                       {"absent.mdb", "copy.mdb", "n'existe pas"}};
  for (const auto& fact : refused) {
    EXPECT_EQ(tool({"backup", file(fact.from), file(fact.to)}), 1) << fact.from;
    EXPECT_THAT(said, HasSubstr(fact.why));
  }
  EXPECT_EQ(content(), before);
}

}  // namespace
}  // namespace tavoline::tool
