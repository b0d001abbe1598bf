#include "cash/Aff_caisseU.h"
#include "cash/C_caisseU.h"
#include "catalogue/C_articleU.h"
#include "catalogue/C_tableU.h"
#include "catalogue/C_typeU.h"
#include "catalogue/c_endroitU.h"
#include "data/value/Errors.h"
#include "screens/AllScreens.h"
#include "shell/utilisateurUU.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/Lookup.h"

namespace tavoline {
namespace {

using testing::HasSubstr;

/// A list and its entry screen, and how a user goes through them.
struct Pair {
  const char *list, *add, *change, *first, *prior, *next, *last;
  const char* entry;
  bool modal;
  const char* typed;           // the input that holds a free text
  const char* required;        // the inputs that must be filled
  bool redStays;               // they stay red when the entry is left by "Fermer"
  std::function<void()> fill;  // gives all that is mandatory
  const char* table;           // where it goes
  const char* taken;           // a row that another workstation saves under the same key
  const char* missing = "Saisissez le code de l'élément en cours";
};

const Pair kPairs[] = {
    {"liste_endroitF", "Ajouter", "Modifier", "Premier", "Precedent", "Suivant", "Dernier", "c_endroitF",
     false, "RzDBEdit2", "RzDBEdit2", false, [] { c_endroitF->RzDBEdit2->Text("Jardin"); }, "Endroit",
     "insert into Endroit(ID_endroit, Endoit) values (2, 'autre')"},
    {"liste_tableF", "Ajouter", "Modifier", "Premier", "Precedent", "Suivant", "Dernier", "C_tableF", false,
     "DBEdit2", "DBEdit2 RzDBComboBox1 RzDBLookupComboBox1", false,
     [] {
       C_tableF->DBEdit2->Text("T9");
       C_tableF->RzDBLookupComboBox1->Choose(1);
     },
     "Table_", "insert into Table_(ID_table) values (1)"},
    {"Liste_TypeF", "Ajouter", "Modifier", "Premier", "Precedent", "Suivant", "Dernier", "Type_produitF",
     false, "RzDBEdit2", "RzDBEdit2", true, [] { Type_produitF->RzDBEdit2->Text("Glaces"); }, "type",
     "insert into type(code) values (2)"},
    {"Liste_produitF", "Ajouter", "Modifier", "Premier", "Precedent", "Suivant", "Dernier", "C_articleF",
     false, "DBEdit2", "DBEdit1 DBEdit2 RzDBComboBox1 RzDBLookupComboBox1", false,
     [] {
       C_articleF->DBEdit2->Text("JUS");
       C_articleF->RzDBLookupComboBox1->Choose(1);
       C_articleF->RzDBComboBox1->Text("OUI");
     },
     "article", "insert into article(code_barre) values ('1')"},
    {"Configuration_utlisateurF", "Ajouter", "Modifier", nullptr, nullptr, nullptr, nullptr, "utilisateurFF",
     false, "RzDBEdit1", "RzDBEdit9 RzDBEdit1 RzDBEdit2", true,
     [] {
       utilisateurFF->RzDBEdit9->Text("32");
       utilisateurFF->RzDBEdit1->Text("Cherif");
       utilisateurFF->RzDBEdit2->Text("Lina");
     },
     "utilisateur", "insert into utilisateur(login) values ('32')", "veuillez saisir les champs obligatoire"},
    {"liste_caisseF", "AdvSmoothButton1", "AdvSmoothButton4", "AdvSmoothButton8", "AdvSmoothButton7",
     "AdvSmoothButton5", "AdvSmoothButton6", "C_caisseF", true, "DBEdit2", "DBEdit2", true,
     [] { C_caisseF->DBEdit2->Text("Comptoir"); }, "caisse", "insert into caisse(ID_caise) values ('C002')"},
    {"liste_aff_caisseF", "RzShapeButton3", "RzShapeButton4", "Premier", "Precedent", "Suivant", "Dernier",
     "Aff_caisseF", true, "DBEdit4", "RzDBLookupComboBox1 RzDBLookupComboBox2", false,
     [] {
       Aff_caisseF->RzDBLookupComboBox1->Choose("C001");
       Aff_caisseF->RzDBLookupComboBox2->Choose("31");
       Aff_caisseF->DBEdit4->Text("Le soir");
     },
     "acce_caisse", nullptr},
};

class EntriesTest : public AllScreens {
 protected:
  /// Presses a button of the list, and takes the steps in the entry that opens.
  void inEntry(const Pair& pair, const char* button, const std::function<void()>& steps) {
    const auto tap = [&] { at.tap(std::string(pair.list) + "." + button); };
    bringUp(Forms::find(pair.list));
    if (pair.modal) return at.during(tap, steps);
    tap();
    steps();
  }
  void tapEntry(const Pair& pair, const char* button) { at.tap(std::string(pair.entry) + "." + button); }
  static Dataset& rows(const Pair& pair) {
    return *Forms::control<DBEdit>(pair.entry, pair.typed)->dataset();
  }
  static std::vector<std::string> redInputs(const Pair& pair) {
    std::vector<std::string> names;
    for (const QWidget* input : Forms::find(pair.entry)->findChildren<QWidget*>()) {
      if (input->property("red").toBool()) names.push_back(input->objectName().toStdString());
    }
    return names;
  }
  std::string count(const Pair& pair) { return at.value(std::string("select count(*) from ") + pair.table); }
};

// What the store refuses is told in its own words; the entry stays open with what was typed, and saves once
// the reason is gone.
TEST_F(EntriesTest, WhatTheStoreRefusesStaysOpen) {
  start({"insert into Endroit(ID_endroit, Endoit) values (1, 'Salle')",
         "insert into type(code, Type_Produit) values (1, 'BOISSONS')",
         "insert into caisse(ID_caise, nom_caisse, general) values ('C001', 'Salle', 'NON')",
         "insert into utilisateur(login, nom, role) values ('31', 'Mansouri', 'User')"});
  for (const Pair& pair : kPairs) {
    const std::string before = count(pair);
    const std::string last = at.value(std::string("select coalesce(max(rid), 0) from ") + pair.table);
    const struct {
      const char* what;
      std::function<void()> spoil, mend;
      const char* sentence;
    } wrongs[] = {
        {"a full disk", [&] { session.beforeWrite = [] { throw StoreError("Le disque est plein."); }; },
         [&] { session.beforeWrite = nullptr; }, "Le disque est plein"},
        {"a text too wide",
         [&] { Forms::control<DBEdit>(pair.entry, pair.typed)->Text(std::string(300, 'W')); }, pair.fill,
         "trop long"},
        {"a key that exists", [&] { at.sql(pair.taken); },
         [&] { at.sql(std::string("delete from ") + pair.table + " where rid > " + last); }, "existe déjà"},
    };
    for (const auto& [what, spoil, mend, sentence] : wrongs) {
      if (std::string(what) == "a key that exists" && !pair.taken) continue;
      SCOPED_TRACE(std::string(pair.entry) + ": " + what);
      inEntry(pair, pair.add, [&, &spoil = spoil, &mend = mend, &sentence = sentence] {
        pair.fill();
        spoil();
        const std::string typed = at.text(std::string(pair.entry) + "." + pair.typed);
        at.answers({{HasSubstr(sentence)}});
        tapEntry(pair, "Enregistrer");
        EXPECT_TRUE(Forms::find(pair.entry)->Visible());
        EXPECT_EQ(at.text(std::string(pair.entry) + "." + pair.typed), typed);
        EXPECT_EQ(rows(pair).State(), DatasetState::Insert);
        EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
        mend();
        tapEntry(pair, "Enregistrer");
      });
      EXPECT_FALSE(Forms::find(pair.entry)->Visible());
      EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
      EXPECT_EQ(count(pair), std::to_string(std::stoi(before) + 1));
      at.sql(std::string("delete from ") + pair.table + " where rid > " + last);
      rows(pair).Reopen();
    }
  }
}

// "Modifier" on an empty list starts a row, which is refused as long as it is empty and goes with "Fermer".
// What is mandatory is red meanwhile.
TEST_F(EntriesTest, AnEmptyListStartsARowThatIsNotKept) {
  start();
  for (const Pair& pair : kPairs) {
    SCOPED_TRACE(pair.entry);
    bringUp(Forms::find(pair.list));
    for (const char* step : {pair.first, pair.prior, pair.next, pair.last}) {
      if (step) at.tap(std::string(pair.list) + "." + step);
    }
    inEntry(pair, pair.change, [&] {
      EXPECT_EQ(rows(pair).State(), DatasetState::Insert);
      EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
      at.answers({{pair.missing}});
      tapEntry(pair, "Enregistrer");
      EXPECT_TRUE(Forms::find(pair.entry)->Visible());
      EXPECT_THAT(redInputs(pair), testing::UnorderedElementsAreArray(test::words(pair.required)));
      tapEntry(pair, "Fermer");
    });
    EXPECT_EQ(!redInputs(pair).empty(), pair.redStays);
    EXPECT_EQ(rows(pair).State(), DatasetState::Browse);
    EXPECT_EQ(count(pair), "0");
    EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  }
}

}  // namespace
}  // namespace tavoline
