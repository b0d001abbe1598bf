#pragma once

#include <string>

namespace tavoline {

/// All that a purchase writes to, as one text.
inline const char kContents[] =
    "(select json_group_array(json_array(N_facture, code_fournisseur, HT, TVA, TCC, MONTANT_VERSE, "
    "MONTANT_RESTE, id_caisse, J)) from facture_achat)"
    "|| (select json_group_array(json_array(n_facture, code_barre, qte_achat, prix_achat, TOTAL)) from Achat)"
    "|| (select json_group_array(json_array(code_barre, qte_stock, prix_achat)) from article)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)";

inline const std::string kArrival =
    "store " TAVOLINE_FOLDER "purchases.sql\nstart\nlogin 10 1\ntap AdvSmoothButton4\nin c_facture_achatF\n";
inline const std::string kHeader =
    "tap liste_facture_achatF.Ajouter\ntap ChoisirFournisseur\ntap Liste_fournisseurF.RzRapidFireButton1\n"
    "tap Enregistrer\n";
inline const std::string kLine = "tap x1\ntap Liste_produitF.RzRapidFireButton1\ntype 3\\n100";
inline const std::string kDebt =
    "sql insert into facture_achat (N_facture, TCC, en_caisse, MONTANT_VERSE, MONTANT_RESTE, id_caisse) "
    "values (1, 900, 'OUI', 0, 900, 'C001')\nreopen facture_achat\n";
inline const std::string kPayment = "tap liste_facture_achatF.MontantVerse\nover MontantF.DBEdit1 ";
inline const std::string kPay = "tap MontantF.Enregistrer";

/// A series of writes, in the steps of a session.
struct Purchase {
  const char* name;
  int writes;
  std::string before, run;
  std::string again;   ///< What is done behind a refused write, once the store takes it.
  int inDialog = 0;    ///< As many of the writes leave the payment dialog open, where it is tapped again.
  int repeatable = 1;  ///< From this write on, all is then as if nothing had been refused.
};
inline const Purchase kPurchases[] = {
    {"saving a header", 2,
     "tap liste_facture_achatF.Ajouter\ntap ChoisirFournisseur\n"
     "tap Liste_fournisseurF.RzRapidFireButton1",
     "tap Enregistrer", "tap Enregistrer"},
    {"a line more", 5, kHeader + kLine, "tap x5", "tap Fermer", 0, 5},
    {"a line changed", 5, kHeader + kLine + "\\n\ntap x2\ntype 5\\n110", "tap x5", "tap Fermer", 0, 5},
    {"a line less", 2, kHeader + kLine + "\\n\nanswer Oui\nanswer Oui", "tap x4", "tap x4"},
    {"a first payment", 3, kDebt, kPayment + "300\n" + kPay, "", 3},
    {"a further payment", 4, kDebt + kPayment + "400\n" + kPay, kPayment + "300\n" + kPay, "", 4},
    {"too much", 5, kDebt, kPayment + "1000\n" + kPay, "tap liste_facture_achatF.MontantVerse", 3},
};

}  // namespace tavoline
