#include "sales/SalesTest.h"

namespace tavoline {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MapTest : public SalesTest {};

TEST_F(MapTest, TilesFollowTheRowsOfTheChosenPlace) {
  openMap();
  EXPECT_THAT(tableTiles(), IsEmpty()) << "no place is chosen yet";
  choosePlace(1);
  EXPECT_THAT(tableTiles(), ElementsAre("btn0 T1", "btn1 T2", "btn2 L'angle", "btn3 Bizarre"));
  choosePlace(2);
  EXPECT_THAT(tableTiles(), ElementsAre("btn0 Terrasse"));
  EXPECT_THAT(writes(), IsEmpty());

  for (const auto* tile : commandeF->RzFlowPanel1->findChildren<ShapeButton*>())
    EXPECT_EQ(tile->size(), QSize(100, 108));
  EXPECT_EQ(commandeF->Image1->pixmap().size(), QSize(99, 108));
  EXPECT_EQ(commandeF->Image2->pixmap().size(), QSize(99, 108));
}

TEST_F(MapTest, ATileShowsWhetherItsTableIsTaken) {
  store("update Table_ set etat='ON', n_commande=1 where ID_table=2");
  openMap();
  choosePlace(1);
  const QImage free = looks("btn0"), busy = looks("btn1"), neither = looks("btn3");
  EXPECT_NE(free, busy);
  const auto middleEdge = [](const QImage& tile) { return tile.pixelColor(50, 29); };
  EXPECT_GT(middleEdge(free).green(), middleEdge(free).red());
  EXPECT_GT(middleEdge(busy).red(), middleEdge(busy).green());
  EXPECT_NEAR(middleEdge(neither).red(), middleEdge(neither).green(), 12);
}

TEST_F(MapTest, AFreeTableGetsANumberedOrderAndItsLock) {
  openMap();
  choosePlace(1);
  tap("T1");
  EXPECT_THAT(
      writes(),
      ElementsAre("insert commande n_table,table,etat_commande,login,n_commande,date_commande,en_caisser",
                  "update commande J,M,A", "update Table_ control"));
  EXPECT_EQ(
      row("select n_commande, n_table, \"table\", login, etat_commande, en_caisser, J, M, A, date_commande, "
          "remise from commande"),
      "1|1|T1|ab12|Encours|no|14|7|2024|2024-07-14 12:30:15.000|0.0");
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "OFF|close|0");
  EXPECT_EQ(Commande_avnF->RzLabel3->Caption(), "T1");
  EXPECT_EQ(Commande_avnF->Label4->Caption(), "insert");
  EXPECT_TRUE(Commande_avnF->Visible());
  EXPECT_EQ(Commande_avnF->parentWidget(), MenuF->RzPanel4);
  EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(MenuF->Label2->Caption(), "Active");
}

TEST_F(MapTest, OrdersAreNumberedFromTheHighestThatStands) {
  store("insert into commande(n_commande, en_caisser) values (41, 'no'), (7, 'no')");
  openMap();
  choosePlace(1);
  tap("T1");
  EXPECT_EQ(row("select max(n_commande) from commande"), "42");
  press(Commande_avnF->Fermer);
  EXPECT_EQ(row("select max(n_commande) from commande"), "41") << "left without lines, the order goes";
  tap("T2");
  EXPECT_EQ(row("select n_commande, n_table from commande where n_table is not null"), "42|2");
}

TEST_F(MapTest, AWaitingOrderIsReopenedWithItsLines) {
  openOrder("T1");
  tapArticle("Café");
  tapArticle("Thé");
  press(Commande_avnF->Enregistrer);
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "ON|open|1");
  setClock(DateTime::of(2024, 7, 15, 9, 0, 0));
  forgetWrites();

  tap("T1");
  EXPECT_THAT(writes(), ElementsAre("update Table_ control"));
  EXPECT_EQ(lines(), "1 Café 100 100; 1 Thé 80 80");
  EXPECT_EQ(Commande_avnF->DBText2->Caption(), "180");
  EXPECT_EQ(Commande_avnF->Label4->Caption(), "edit");
  EXPECT_EQ(row("select date_commande from commande"), "2024-07-14 12:30:15.000");
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "ON|close|1");
}

TEST_F(MapTest, AStateThatIsNeitherOnNorOffIsReopened) {
  store("insert into commande(n_commande, \"table\", en_caisser) values (5, 'Bizarre', 'no')");
  store("update Table_ set n_commande=5 where ID_table=5");
  openMap();
  choosePlace(1);
  tap("Bizarre");
  EXPECT_THAT(writes(), ElementsAre("update Table_ control"));
  EXPECT_EQ(Commande_avnF->DBText3->Caption(), "5");
}

TEST_F(MapTest, AHeldTableIsRefusedAndTheMenuStaysShut) {
  store("update Table_ set control='close' where ID_table=1");
  openMap();
  choosePlace(1);
  tap("T1");
  EXPECT_THAT(said(), ElementsAre("cette table est reserver par un autre utilisateur , merci de pationter"));
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(MenuF->Label2->Caption(), "Active");
  EXPECT_FALSE(DM->Table_.Filtered());
  EXPECT_THAT(tableTiles(), ElementsAre("btn0 T1", "btn1 T2", "btn2 L'angle", "btn3 Bizarre"));
  store("delete from Table_ where ID_table=5");
  tap("Bizarre");
  EXPECT_THAT(said(), SizeIs(1)) << "a table deleted elsewhere is refused the same";
  EXPECT_THAT(writes(), IsEmpty());

  tap("T2");
  press(Commande_avnF->Fermer);
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled()) << "leaving another order is the way back";
  EXPECT_EQ(MenuF->Label2->Caption(), "");
}

TEST_F(MapTest, AnApostropheInATableNameEndsInTheFiltersError) {
  openMap();
  choosePlace(1);
  tap("L'angle");
  EXPECT_EQ(said().size(), 1u);
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_FALSE(Commande_avnF->Visible());
}

TEST_F(MapTest, TheMapFollowsOtherWorkstationsOnlyWhileNoOrderIsOpen) {
  openMap();
  choosePlace(1);
  const QImage before = looks("btn1");
  store("update Table_ set etat='ON', n_commande=9 where ID_table=2");
  MenuF->ok->Click();
  EXPECT_NE(looks("btn1"), before);

  tap("T1");
  store("update Table_ set etat='OFF' where ID_table=2");
  const QImage underOrder = looks("btn1");
  MenuF->ok->Click();
  EXPECT_EQ(looks("btn1"), underOrder);
}

TEST_F(MapTest, ClosingTheMapClearsItsMark) {
  openMap();
  EXPECT_EQ(MenuF->Label1->Caption(), "Active");
  press(commandeF->Fermer);
  EXPECT_EQ(MenuF->Label1->Caption(), "");
  EXPECT_FALSE(commandeF->Visible());
}

}  // namespace
}  // namespace tavoline
