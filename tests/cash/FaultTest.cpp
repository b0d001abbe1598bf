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
      desk.play("tap RzBitBtn7");
      EXPECT_FALSE(caiseF->Visible());
      EXPECT_EQ(desk.at.value("select count(*) || ' ' || sum(fond_caisse) from caise"), "1 2500.0");
      EXPECT_EQ(desk.at.value("select group_concat(solde, ' ') from caisse"), "2500.0 700.4 14000.0");
      EXPECT_EQ(desk.at.value("select group_concat(montant_dep, ' ') from depence"), "300.0 9000.0 500.0");
    }
}

}  // namespace
}  // namespace tavoline
