#pragma once

#include "support/Session.h"

namespace tavoline {

/// All that a sale writes to, as one text.
inline const char Contents[] =
    "(select json_group_array(json_array(n_commande, \"table\", login, etat_commande, HT, remi, TVA, "
    "tcc, J, M, A, date_commande, id_caisse)) from commande)"
    "|| (select json_group_array(json_array(n_commande, code_article, qte, prix, total)) from "
    "relation_commande)"
    "|| (select json_group_array(json_array(code_barre, qte_stock)) from article)"
    "|| (select json_group_array(json_array(ID_table, etat, control, n_commande)) from Table_)"
    "|| (select json_group_array(json_array(ID_caise, solde)) from caisse)";

/// The steps to the map, on a store that is open; and on a fresh one.
inline const std::string kMap =
    "start\nlogin ab12 x\ntap AdvSmoothButton6\nin commandeF\nchoose DBLookupListBox1 1\n";
inline const std::string kFreshMap = "store " TAVOLINE_FOLDER "cafeteria.sql\n" + kMap;

/// A workstation at the map of a small cafeteria, played by the steps of a session.
class Life : public Session {
 public:
  Life() { play(kFreshMap); }
  explicit Life(const std::filesystem::path& folder) : Session(folder) { play(kMap); }

  std::string contents() { return at.value(std::string("select ") + Contents); }
  /// Runs `strike` when the n-th write from now on is asked for.
  void atWrite(int n, const std::function<void()>& strike) {
    beforeWrite = [n, strike, count = 0]() mutable {
      if (++count == n) strike();
    };
  }
};

/// What a waiter does at a table, each a series of writes, in the steps of a session.
struct Gesture {
  const char* name;
  int writes;
  std::string before, run, finish;
  std::string again;  ///< Once the cause of its failure is gone; and what is seen then.
  std::string seen;
};

inline const std::string kOrder = "tap T1\nin Commande_avnF\nchoose DBLookupListBox1 1\n";
inline const std::string kLines = "\ngrid Commande_avnF.RzDBGrid1";
inline const std::string kTable = "\nstored etat, control, n_commande from Table_ where ID_table=1";
inline const Gesture Gestures[] = {
    {"taking a table", 3, "", "tap T1", "", "in Commande_avnF\nchoose DBLookupListBox1 1\ntap Café" + kLines,
     "1 | Café | 100 | 100\n"},
    {"the first tap", 3, kOrder, "tap Café", "", "tap Café" + kLines, "1 | Café | 100 | 100\n"},
    {"the second tap", 2, kOrder + "tap Café", "tap Café", "", "tap Café" + kLines, "2 | Café | 100 | 200\n"},
    {"saving a quantity", 2, kOrder + "tap Café\ntap Qte\nover qteF.RzDBSpinEdit1 3", "tap qteF.Enregistrer",
     "", "tap qteF.Enregistrer" + kLines, "3 | Café | 100 | 300\n"},
    {"removing a line", 2, kOrder + "tap Café\nanswer Oui", "tap Supp", "", "answer Oui\ntap Supp" + kLines,
     "(none)\n"},
    // What does not change a row would not reach the disk.
    {"leaving the table", 2, kOrder + "tap Café\nsql update commande set login='zz'", "tap Enregistrer", "",
     "tap Enregistrer" + kTable, "ON | open | 1\n"},
    {"closing the table", 7, kOrder + "tap Café", "tap Cloturer", "tap RenduF.Enregistrer\nleave",
     "tap Cloturer\ntap RenduF.Enregistrer\nleave\nstored etat_commande, HT, TVA, tcc from commande" + kTable,
     "Terminer | 100.0 | 19.0 | 119.0\nOFF | open | 0\n"},
};

}  // namespace tavoline
