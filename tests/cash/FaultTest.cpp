// What a closing leaves when one of its writes is refused.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "cash/CaiseU.h"
#include "shell/MenuU.h"
#include "support/Session.h"
#include "support/StoreVfs.h"

namespace tavoline {
namespace {

using ::testing::HasSubstr;

// The row, its day, the orders, the desk, the house desk, the loss.
constexpr int kWrites = 6;

const char kContents[] =
    "select (select json_group_array(json_array(n_caise, total_caise, fond_caisse, J, total_depense)) from "
    "caise)"
    "|| (select json_group_array(json_array(n_commande, en_caisser)) from commande)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)"
    "|| (select json_group_array(json_array(type_depnce, montant_dep)) from depence)";

class Evening : public Session {
 public:
  Evening() {
    play("store " TAVOLINE_FOLDER
         "cafe.sql\nstart\nlogin 10 1\ntap Caise1\ntap liste_caiseF.AdvSmoothButton1\nin caiseF\n"
         "over DBEdit1 11500\nover DBEdit3 9000");
  }
  std::string contents() { return at.value(kContents); }
};

struct Fault {
  const char* says;
  void (*strike)(test::StoreVfs&, Evening&);
  void (*heal)(test::StoreVfs&, Evening&);
};

void healDisk(test::StoreVfs& disk, Evening&) {
  disk.heal();
}

const Fault kFaults[] = {
    {"plein", [](test::StoreVfs& disk, Evening&) { disk.failWrites(SQLITE_FULL); }, healDisk},
    {"n'a pas pu lire ou écrire", [](test::StoreVfs& disk, Evening&) { disk.failWrites(SQLITE_IOERR_WRITE); },
     healDisk},
    {"protégé contre l'écriture", [](test::StoreVfs& disk, Evening&) { disk.failWrites(SQLITE_READONLY); },
     healDisk},
    {"occupé par un autre poste", [](test::StoreVfs&, Evening& desk) { desk.at.sql("begin immediate"); },
     [](test::StoreVfs&, Evening& desk) { desk.at.sql("rollback"); }},
};

TEST(ClosingFaultTest, ARefusedWriteLeavesTheEarlierOnesAndTheScreenAsItWas) {
  for (int n = 1; n <= kWrites; ++n)
    for (const Fault& fault : kFaults) {
      SCOPED_TRACE(std::string(fault.says) + ", write " + std::to_string(n));
      test::StoreVfs disk;
      disk.skipWaiting();
      Evening desk;
      std::string before;
      int writes = 0;
      desk.beforeWrite = [&] {
        if (++writes != n) return;
        before = desk.contents();
        fault.strike(disk, desk);
      };
      EXPECT_THAT(desk.play("tap RzBitBtn7"), HasSubstr(fault.says));
      EXPECT_EQ(writes, n) << "it went on after the refusal";
      EXPECT_EQ(desk.contents(), before) << "the earlier writes stay, and nothing is added";
      EXPECT_TRUE(caiseF->Visible());
      EXPECT_EQ(caiseF->Label9->Caption(), "insert");
      EXPECT_EQ(caiseF->DBEdit3->Text(), "9000");
      EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
      fault.heal(disk, desk);
      desk.beforeWrite = nullptr;
      // The house desk has got its part by the time of the last write: another amount moves the difference.
      const bool less = n == kWrites;
      desk.play(less ? "over DBEdit3 8000\ntap RzBitBtn7" : "tap RzBitBtn7");
      EXPECT_FALSE(caiseF->Visible());
      EXPECT_EQ(
          desk.at.value("select count(*) || ' ' || sum(fond_caisse) || ' ' || sum(solde_caisse) from caise"),
          less ? "1 3500.0 12000.0" : "1 2500.0 12000.0");
      EXPECT_EQ(desk.at.value("select group_concat(solde, ' ') from caisse"),
                less ? "3500.0 700.4 13000.0" : "2500.0 700.4 14000.0");
      EXPECT_EQ(desk.at.value("select group_concat(montant_dep, ' ') from depence"), "300.0 9000.0 500.0");
    }
}

// Repeated, an expense is there once and its desk has paid it once.
TEST(ExpenseFaultTest, ARefusedWriteIsMadeUpByTheNextSave) {
  const std::string arrival =
      "store " TAVOLINE_FOLDER "cafe.sql\nstart\nlogin 10 1\ntap MenuF.AdvSmoothButton5\nin C_depenceF\n";
  const struct {
    int writes;
    std::string before, contents;
  } saves[] = {{3, "tap liste_depenceF.AdvSmoothButton9\nset RzDBComboBox1 Autres\nover DBEdit4 200",
                "3 9500.0 11800.0"},
               {2, "tap liste_depenceF.AdvSmoothButton4\nover DBEdit4 400", "2 9400.0 600.4"}};
  for (const auto& save : saves)
    for (int n = 1; n <= save.writes; ++n) {
      SCOPED_TRACE(save.before + ", write " + std::to_string(n));
      test::StoreVfs disk;
      Session desk;
      desk.play(arrival + save.before);
      int writes = 0;
      desk.beforeWrite = [&] { ++writes == n ? disk.failWrites(SQLITE_FULL) : disk.heal(); };
      EXPECT_THAT(desk.play("tap AdvSmoothButton1\ntap AdvSmoothButton1"), HasSubstr("plein"));
      EXPECT_EQ(
          desk.at.value("select count(*) || ' ' || sum(montant_dep) || ' ' || (select min(solde) from caisse "
                        "where solde not in (12000, 700.4, 5000)) from depence"),
          save.contents);
    }
}

}  // namespace
}  // namespace tavoline
