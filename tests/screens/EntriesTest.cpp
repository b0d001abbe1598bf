#include "data/value/Errors.h"
#include "screens/AllScreens.h"
#include "toolkit/controls/DBEdit.h"

namespace tavoline {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A list and its entry screen, and how a user goes through them.
struct Pair {
  const char *list, *buttons;  // to add, to change, then those that move
  const char* entry;
  bool modal;
  const char* typed;     // the input that holds a free text
  const char* required;  // the inputs that must be filled
  bool redStays;         // they stay red when the entry is left by "Fermer"
  const char* fill;      // steps that give all that is mandatory
  const char* table;     // where it goes
  const char* taken;     // a row that another workstation saves under the same key
  const char* missing = "Saisissez le code de l'élément en cours";
};

constexpr const char* kButtons = "Ajouter Modifier Premier Precedent Suivant Dernier";

const Pair kPairs[] = {
    {"liste_endroitF", kButtons, "c_endroitF", false, "RzDBEdit2", "RzDBEdit2", false, "set RzDBEdit2 Jardin",
     "Endroit", "insert into Endroit(ID_endroit, Endoit) values (2, 'autre')"},
    {"liste_tableF", kButtons, "C_tableF", false, "DBEdit2", "DBEdit2 RzDBComboBox1 RzDBLookupComboBox1",
     false, "set DBEdit2 T9\nchoose RzDBLookupComboBox1 1", "Table_",
     "insert into Table_(ID_table) values (1)"},
    {"Liste_TypeF", kButtons, "Type_produitF", false, "RzDBEdit2", "RzDBEdit2", true, "set RzDBEdit2 Glaces",
     "type", "insert into type(code) values (2)"},
    {"Liste_produitF", kButtons, "C_articleF", false, "DBEdit2",
     "DBEdit1 DBEdit2 RzDBComboBox1 RzDBLookupComboBox1", false,
     "set DBEdit2 JUS\nchoose RzDBLookupComboBox1 1\nset RzDBComboBox1 OUI", "article",
     "insert into article(code_barre) values ('1')"},
    {"Configuration_utlisateurF", "Ajouter Modifier", "utilisateurFF", false, "RzDBEdit1",
     "RzDBEdit9 RzDBEdit1 RzDBEdit2", true, "set RzDBEdit9 32\nset RzDBEdit1 Cherif\nset RzDBEdit2 Lina",
     "utilisateur", "insert into utilisateur(login) values ('32')", "veuillez saisir les champs obligatoire"},
    {"liste_caisseF",
     "AdvSmoothButton1 AdvSmoothButton4 AdvSmoothButton8 AdvSmoothButton7 AdvSmoothButton5 AdvSmoothButton6",
     "C_caisseF", true, "DBEdit2", "DBEdit2", true, "set DBEdit2 Comptoir", "caisse",
     "insert into caisse(ID_caise) values ('C002')"},
    {"liste_aff_caisseF", "RzShapeButton3 RzShapeButton4 Premier Precedent Suivant Dernier", "Aff_caisseF",
     true, "DBEdit4", "RzDBLookupComboBox1 RzDBLookupComboBox2", false,
     "choose RzDBLookupComboBox1 C001\nchoose RzDBLookupComboBox2 31\nset DBEdit4 \"Le soir\"", "acce_caisse",
     nullptr},
};

class EntriesTest : public AllScreens {
 protected:
  /// Presses a button of the list, and takes the steps in the entry that opens.
  void inEntry(const Pair& pair, std::size_t button, const std::function<void()>& steps) {
    const auto tap = [&] { at.tap(std::string(pair.list) + "." + test::words(pair.buttons).at(button)); };
    bringUp(Forms::find(pair.list));
    if (pair.modal) return at.during(tap, steps);
    tap();
    steps();
  }
  void tapEntry(const Pair& pair, const char* button) { at.tap(std::string(pair.entry) + "." + button); }
  void fill(const Pair& pair) {
    EXPECT_THAT(session.play(std::string("in ") + pair.entry + "\n" + pair.fill), Not(HasSubstr("! ")));
  }
  std::string typed(const Pair& pair) { return at.text(std::string(pair.entry) + "." + pair.typed); }
  static Dataset& rows(const Pair& pair) {
    return *Forms::control<DBEdit>(pair.entry, pair.typed)->dataset();
  }
  static std::vector<std::string> redInputs(const Pair& pair) {
    std::vector<std::string> names;
    for (const QWidget* input : Forms::find(pair.entry)->findChildren<QWidget*>())
      if (input->property("red").toBool()) names.push_back(input->objectName().toStdString());
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
         [&] { Forms::control<DBEdit>(pair.entry, pair.typed)->Text(std::string(300, 'W')); },
         [&] { fill(pair); }, "trop long"},
        {"a key that exists", [&] { at.sql(pair.taken); },
         [&] { at.sql(std::string("delete from ") + pair.table + " where rid > " + last); }, "existe déjà"},
    };
    for (const auto& [what, spoil, mend, sentence] : wrongs) {
      if (std::string(what) == "a key that exists" && !pair.taken) continue;
      SCOPED_TRACE(std::string(pair.entry) + ": " + what);
      inEntry(pair, 0, [&, &spoil = spoil, &mend = mend, &sentence = sentence] {
        fill(pair);
        spoil();
        const std::string filled = typed(pair);
        at.answers({{HasSubstr(sentence)}});
        tapEntry(pair, "Enregistrer");
        EXPECT_TRUE(Forms::find(pair.entry)->Visible());
        EXPECT_EQ(typed(pair), filled);
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
    const auto buttons = test::words(pair.buttons);
    for (std::size_t i = 2; i < buttons.size(); ++i) at.tap(std::string(pair.list) + "." + buttons[i]);
    inEntry(pair, 1, [&] {
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
