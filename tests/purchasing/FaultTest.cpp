// What is left of a purchase when one of its writes is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "support/Session.h"
#include "support/StoreVfs.h"

namespace tavoline {
namespace {

using ::testing::HasSubstr;

const char kContents[] =
    "select (select json_group_array(json_array(N_facture, code_fournisseur, HT, TVA, TCC, MONTANT_VERSE, "
    "MONTANT_RESTE, id_caisse, J)) from facture_achat)"
    "|| (select json_group_array(json_array(n_facture, code_barre, qte_achat, prix_achat, TOTAL)) from Achat)"
    "|| (select json_group_array(json_array(code_barre, qte_stock, prix_achat)) from article)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)";

const std::string kHeader =
    "tap liste_facture_achatF.Ajouter\ntap ChoisirFournisseur\ntap Liste_fournisseurF.RzRapidFireButton1\n"
    "tap Enregistrer\n";
const std::string kLine = "tap x1\ntap Liste_produitF.RzRapidFireButton1\ntype 3\\n100";
const std::string kDebt =
    "sql insert into facture_achat (N_facture, TCC, en_caisse, MONTANT_VERSE, MONTANT_RESTE, id_caisse) "
    "values (1, 900, 'OUI', 0, 900, 'C001')\nreopen facture_achat\n";
const std::string kPayment = "tap liste_facture_achatF.MontantVerse\nover MontantF.DBEdit1 ";

/// A series of writes, in the steps of a session, and the same once the disk has room again.
struct Series {
  const char* name;
  int writes;
  std::string before, run, again;
  int inDialog = 0;  // as many of them leave the payment dialog open
};
const Series kSeries[] = {
    {"saving a header", 2,
     "tap liste_facture_achatF.Ajouter\ntap ChoisirFournisseur\n"
     "tap Liste_fournisseurF.RzRapidFireButton1",
     "tap Enregistrer", "tap Enregistrer"},
    {"a line more", 5, kHeader + kLine, "tap x5", kLine + "\\n"},
    {"a line changed", 5, kHeader + kLine + "\\n\ntap x2\ntype 5\\n110", "tap x5", "tap x2\ntype 7\\n120\\n"},
    {"a line less", 2, kHeader + kLine + "\\n\nanswer Oui", "tap x4", "answer Oui\ntap x4"},
    {"a first payment", 3, kDebt, kPayment + "300\ntap MontantF.Enregistrer",
     kPayment + "300\ntap MontantF.Enregistrer", 3},
    {"a further payment", 4, kDebt + kPayment + "400\ntap MontantF.Enregistrer",
     kPayment + "300\ntap MontantF.Enregistrer", "", 4},
    {"too much", 5, kDebt, kPayment + "1000\ntap MontantF.Enregistrer", "", 3},
};

TEST(PurchaseFaultTest, ARefusedWriteEndsTheHandlerAndWhatWasPostedBeforeStays) {
  for (const Series& series : kSeries)
    for (int n = 1; n <= series.writes; ++n) {
      SCOPED_TRACE(std::string(series.name) + ", write " + std::to_string(n));
      test::StoreVfs disk;
      Session session;
      session.play("store " TAVOLINE_FOLDER
                   "purchases.sql\nstart\nlogin 10 1\ntap AdvSmoothButton4\nin c_facture_achatF\n" +
                   series.before);
      std::string contents;
      session.beforeWrite = [&, count = 0]() mutable {
        if (++count != n) return;
        contents = session.at.value(kContents);
        disk.failWrites(SQLITE_FULL);
      };
      EXPECT_THAT(session.play(series.run + (n <= series.inDialog ? "\nleave MontantF" : "")),
                  HasSubstr("plein"));
      EXPECT_EQ(session.at.value(kContents), contents);
      disk.heal();
      if (!series.again.empty()) {
        EXPECT_THAT(session.play(series.again), testing::Not(HasSubstr("says")));
      }
    }
}

}  // namespace
}  // namespace tavoline
