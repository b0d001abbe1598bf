#include "catalogue/CatalogueFixture.h"

namespace tavoline {
namespace {

class Floor : public CatalogueTest {
 protected:
  void addPlaces() {
    ws.sql("insert into Endroit(ID_endroit, Endoit) values (1, 'Salle'), (4, 'Terrasse')");
    ws.sql(
        "insert into Table_(ID_table, \"table\", endroit, id_endroit, etat, control) values"
        " (1, 'T1', 'Salle', 1, 'OFF', 'open'), (2, 'T2', 'Salle', 1, 'OFF', 'open'),"
        " (3, 'T3', 'Terrasse', 4, 'ON', 'close')");
  }
};

TEST_F(Floor, ThePlacesAreNumberedFromOneAndOnFromTheHighest) {
  start();
  open(liste_endroitF);
  ws.tap("liste_endroitF.Ajouter");
  EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(ws.text("c_endroitF.RzDBEdit1"), "1");
  EXPECT_FALSE(c_endroitF->RzDBEdit1->isEnabled());
  ws.settle();
  ws.type("Étage");
  ws.tap("c_endroitF.Enregistrer");
  EXPECT_FALSE(c_endroitF->Visible());
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(ws.sql("select ID_endroit, Endoit from Endroit"), (Workstation::Rows{{"1", "Étage"}}));

  ws.sql("update Endroit set ID_endroit = 7");
  ws.tap("liste_endroitF.Ajouter");
  ws.settle();
  ws.type("  ");  // blanks are a name
  ws.tap("c_endroitF.Enregistrer");
  EXPECT_EQ(ws.value("select Endoit from Endroit where ID_endroit = 8"), "  ");
}

TEST_F(Floor, LeavingAnEntryKeepsNothing) {
  addPlaces();
  start();
  open(liste_endroitF);
  ws.tap("liste_endroitF.Modifier");
  ws.settle();
  ws.type("autre");
  ws.tap("c_endroitF.Fermer");
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(ws.value("select Endoit from Endroit"), "Salle");
  EXPECT_EQ(DM->Endroit.State(), DatasetState::Browse);
}

TEST_F(Floor, APlaceGoesThoughItsTablesStay) {
  addPlaces();
  start();
  open(liste_endroitF);
  ws.answers({{kDelete, "Non"}, {kDelete, "Oui"}, {kDelete, "Oui"}});
  ws.tap("liste_endroitF.Supprimer");
  EXPECT_EQ(ws.value("select count(*) from Endroit"), "2");
  ws.tap("liste_endroitF.Supprimer");
  ws.tap("liste_endroitF.Supprimer");
  EXPECT_EQ(ws.titles().back(), "confirmation");
  ws.tap("liste_endroitF.Supprimer");  // nothing is left, nothing is asked
  EXPECT_EQ(ws.value("select count(*) from Endroit"), "0");
  EXPECT_EQ(ws.value("select endroit from Table_ where ID_table = 3"), "Terrasse");
}

TEST_F(Floor, TheFirstButtonOfTheTablesGoesOneBack) {
  addPlaces();
  start();
  open(liste_endroitF);
  ws.tap("liste_endroitF.Dernier");
  EXPECT_EQ(DM->Endroit["ID_endroit"].text(), "4");
  ws.tap("liste_endroitF.Premier");
  EXPECT_EQ(DM->Endroit["ID_endroit"].text(), "1");
  open(liste_tableF);
  ws.tap("liste_tableF.Dernier");
  EXPECT_EQ(DM->Table_["ID_table"].text(), "3");
  ws.tap("liste_tableF.Premier");
  EXPECT_EQ(DM->Table_["ID_table"].text(), "2");
  ws.tap("liste_tableF.Precedent");
  ws.tap("liste_tableF.Premier");
  EXPECT_EQ(DM->Table_["ID_table"].text(), "1");
}

TEST_F(Floor, ATableIsEnteredWithItsPlaceAndFree) {
  addPlaces();
  start();
  open(liste_tableF);
  ws.tap("liste_tableF.Ajouter");
  ws.settle();
  ws.type("T9");
  ws.answers({{kMandatory}});
  ws.tap("C_tableF.Enregistrer");  // no place yet
  EXPECT_EQ(DM->Table_.State(), DatasetState::Insert);
  C_tableF->RzDBLookupComboBox1->Choose(4);
  EXPECT_EQ(ws.text("C_tableF.DBEdit4"), "Terrasse");
  ws.tap("C_tableF.Enregistrer");
  EXPECT_FALSE(C_tableF->Visible());
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(ws.sql("select ID_table, \"table\", endroit, id_endroit, etat, control, n_commande from Table_ "
                   "where rid > 3"),
            (Workstation::Rows{{"4", "T9", "Terrasse", "4", "OFF", "open", ""}}));
}

TEST_F(Floor, TablesAreFilteredByPlaceUntilTheListCloses) {
  addPlaces();
  ws.sql("insert into Endroit(ID_endroit, Endoit) values (5, 'Vide')");
  start();
  open(liste_tableF);
  ws.tap("liste_tableF.Filtrer");  // nothing chosen
  EXPECT_FALSE(DM->Table_.Filtered());
  for (const auto& [place, tables] : {std::pair{4, 1u}, std::pair{5, 0u}, std::pair{1, 2u}}) {
    liste_tableF->RzDBLookupComboBox1->Choose(place);
    ws.tap("liste_tableF.Filtrer");
    EXPECT_EQ(DM->Table_.RecordCount(), tables) << place;
  }
  ws.tap("liste_tableF.Initialiser");
  EXPECT_EQ(DM->Table_.RecordCount(), 3u);
  EXPECT_EQ(liste_tableF->RzDBLookupComboBox1->Text(), "");
  liste_tableF->RzDBLookupComboBox1->Choose(1);
  ws.tap("liste_tableF.Filtrer");
  ws.tap("liste_tableF.Quitter");
  EXPECT_FALSE(DM->Table_.Filtered());
}

TEST_F(Floor, CategoriesAreAddedAndChangedButNeverDeleted) {
  start();
  open(Liste_TypeF);
  EXPECT_FALSE(Liste_TypeF->Supprimer->isEnabled());
  ws.tap("Liste_TypeF.Ajouter");
  ws.settle();
  ws.type("PÂTISSERIES");
  ws.tap("Type_produitF.Enregistrer");
  ws.tap("Liste_TypeF.Ajouter");
  ws.settle();
  ws.type("GLACES");
  ws.tap("Type_produitF.Enregistrer");
  ws.tap("Liste_TypeF.Modifier");
  ws.settle();
  ws.type("SORBETS");
  ws.tap("Type_produitF.Enregistrer");
  EXPECT_EQ(ws.sql("select code from type order by rid"), (Workstation::Rows{{"1"}, {"2"}}));
  EXPECT_FALSE(Liste_TypeF->Supprimer->isEnabled());
}

TEST_F(Floor, TheVatSettingIsSavedReopenedAndMadeWhereItIsMissing) {
  ws.sql("delete from TVA");
  start();
  TVAF->Show();
  TVAF->DBEdit1->setFocus();
  ws.settle();
  ws.type("9");
  TVAF->DBComboBox1->Text("NON");
  ws.tap("TVAF.Enregistrer");
  EXPECT_FALSE(TVAF->Visible());
  EXPECT_EQ(ws.sql("select tva, utilisation from TVA"), (Workstation::Rows{{"9.0", "NON"}}));
  EXPECT_EQ(DM->TVA["utilisation"].text(), "NON");

  TVAF->Show();
  TVAF->DBEdit1->setFocus();
  TVAF->DBEdit1->selectAll();
  ws.settle();
  ws.type("beaucoup");
  // Told when the input is left for the button, and again by the button itself.
  ws.answers({{testing::HasSubstr("beaucoup")}, {testing::HasSubstr("beaucoup")}});
  ws.tap("TVAF.Enregistrer");
  EXPECT_TRUE(TVAF->Visible());
  EXPECT_EQ(ws.value("select tva from TVA"), "9.0");
  DM->TVA.Cancel();
}

}  // namespace
}  // namespace tavoline
