#include <QtWidgets/QScrollBar>

#include "sales/SalesTest.h"

namespace tavoline {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OrderTest : public SalesTest {
 protected:
  void SetUp() override {
    SalesTest::SetUp();
    openOrder("T1");
    forgetWrites();
  }
};

const char InsertLine[] = "insert relation_commande n_commande,code_article,article,qte,prix,total";
const char UpdateLine[] = "update relation_commande n_commande,code_article,article,qte,prix,total";
const char Stock[] = "update article qte_stock";
const char Mark[] = "update Table_ etat,n_commande";

TEST_F(OrderTest, TilesStandByArticleCodeWithPictureNameAndPrice) {
  EXPECT_THAT(articleTiles(), ElementsAre("pl0 Café 100", "pl1 Thé 80", "pl2 Jus d'orange 150", "pl3 Eau 50",
                                          "pl4 Glace 12,5", "pl5 Menu 300"));
  chooseCategory(2);
  EXPECT_THAT(articleTiles(), ElementsAre("pl0 Plat 400"));
  for (const auto* tile : Commande_avnF->RzFlowPanel1->findChildren<Panel*>())
    EXPECT_EQ(tile->size(), QSize(140, 130));
}

TEST_F(OrderTest, AllIsInSightOnTheSmallestDisplay) {
  store("update article set designation_article='PAIN AU CHOCOLAT MAISON' where code_barre='2'");
  store("update type set Type_Produit='Rafraîchissements' where code=1");
  DM->Article.Reopen();
  DM->type_produit.Reopen();
  chooseCategory(1);
  for (const char* article : {"Café", "Eau", "PAIN AU CHOCOLAT MAISON"}) tapArticle(article);
  const auto tiles = Commande_avnF->RzFlowPanel1->tiles<Panel>();
  EXPECT_EQ(tiles[0]->y(), tiles[1]->y());
  EXPECT_FALSE(tiles[1]->visibleRegion().isEmpty());
  for (const QAbstractScrollArea* area : Commande_avnF->findChildren<QAbstractScrollArea*>())
    EXPECT_FALSE(area->horizontalScrollBar()->isVisible()) << area->objectName().toStdString();
  for (const QLabel* value : Commande_avnF->RzPanel10->findChildren<QLabel*>())
    EXPECT_LE(value->minimumSizeHint().width(), value->width()) << value->text().toStdString();
  for (const QLabel* label : Commande_avnF->findChildren<QLabel*>())
    EXPECT_TRUE(label == Commande_avnF->DBText2 ||
                label->fontInfo().pixelSize() < Commande_avnF->DBText2->fontInfo().pixelSize())
        << label->objectName().toStdString();
}

TEST_F(OrderTest, OnlyAPictureThatCanBeDecodedIsShown) {
  const auto looks = [this](const char* picture) {
    store("update article set IMAGE=" + std::string(picture) + " where code_barre='1'");
    DM->Article.Reopen();
    chooseCategory(1);
    return articleTile("Café")->grab().toImage();
  };
  const QImage captionAlone = looks("null");
  EXPECT_EQ(looks("x'424d0102'"), captionAlone);
  EXPECT_NE(looks("x'424D3A0000000000000036000000280000000100000001000000010018000000000004000000"
                  "000000000000000000000000000000000000FF00'"),
            captionAlone);
}

TEST_F(OrderTest, TheFirstTapAddsTheLineTakesTheStockAndMarksTheTable) {
  EXPECT_FALSE(Commande_avnF->RzPanel10->isVisible());
  tapArticle("Café");
  EXPECT_THAT(writes(), ElementsAre(InsertLine, Stock, Mark));
  EXPECT_EQ(row("select n_commande, code_article, article, qte, prix, total from relation_commande"),
            "1|1|Café|1|100.0|100.0");
  EXPECT_EQ(stockOf("Café"), "9");
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "ON|close|1");
  EXPECT_TRUE(Commande_avnF->RzPanel10->isVisible());
  EXPECT_EQ(Commande_avnF->DBText9->Caption(), "9");
  EXPECT_EQ(row("select HT, tcc from commande"), "|") << "totals come at the closing";
}

TEST_F(OrderTest, ARepeatedTapPricesTheWholeLineAnew) {
  tapArticle("Café");
  forgetWrites();
  store("update article set prix_vente=110.5 where code_barre='1'");
  tapArticle("Café");
  EXPECT_THAT(writes(), ElementsAre(UpdateLine, Stock));
  EXPECT_EQ(row("select qte, prix, total from relation_commande"), "2|110.5|221.0");
  EXPECT_EQ(stockOf("Café"), "8");
  EXPECT_EQ(Commande_avnF->DBText2->Caption(), "221");
}

TEST_F(OrderTest, ATapOnThePictureOrBesideItIsOneTap) {
  press(articleTile("Café")->findChild<ShapeButton*>(QStringLiteral("ig0")));
  EXPECT_EQ(lines(), "1 Café 100 100");
  press(articleTile("Café")->findChild<Label*>(QStringLiteral("l20")));
  EXPECT_EQ(lines(), "2 Café 100 200");
}

TEST_F(OrderTest, TheModeOfTheStockDecides) {
  struct Case {
    const char* article;
    std::vector<std::string> writes;
    std::vector<std::string> said;
    const char* stock;
  };
  const Case cases[] = {
      {"Thé", {InsertLine, Mark}, {}, "5"},
      {"Thé", {UpdateLine}, {}, "5"},
      {"Eau", {InsertLine, Stock, Mark}, {}, "0"},
      {"Eau", {}, {"STOCK=0"}, "0"},
      {"Menu", {}, {}, "5"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.article);
    forgetWrites();
    tapArticle(c.article);
    EXPECT_EQ(writes(), c.writes);
    EXPECT_EQ(said(), c.said);
    EXPECT_EQ(stockOf(c.article), c.stock);
  }
  EXPECT_EQ(lines(), "2 Thé 80 160; 1 Eau 50 50");
}

TEST_F(OrderTest, ATapThatCannotBeReadEndsBeforeAnyWrite) {
  for (const char* article : {"Glace", "Jus d'orange"}) {  // no stock to convert; an apostrophe in the filter
    tapArticle(article);
    EXPECT_EQ(said().size(), 1u) << article;
    EXPECT_THAT(writes(), IsEmpty()) << article;
  }
}

TEST_F(OrderTest, TwoArticlesOfOneNameAreTheFirstByCode) {
  store(
      "insert into article(code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto) "
      "values ('0', 'Thé', 1, 3, 75, 'NON')");
  DM->Article.Reopen();
  tapArticle("Thé");
  EXPECT_EQ(row("select code_article, prix from relation_commande"), "0|75.0");
}

TEST_F(OrderTest, AClickOnALineShowsItsArticle) {
  tapArticle("Café");
  tapArticle("Thé");
  EXPECT_EQ(Commande_avnF->DBText6->Caption(), "Thé");
  clickLine(0);
  EXPECT_EQ(Commande_avnF->DBText6->Caption(), "Café");
  pressKey(Qt::Key_Down);
  EXPECT_EQ(Commande_avnF->DBText14->Caption(), "2") << "the keyboard moves the line";
  EXPECT_EQ(Commande_avnF->DBText6->Caption(), "Café") << "but not the article";
}

TEST_F(OrderTest, RemovingALineCreditsTheArticleThatStands) {
  tapArticle("Café");
  tapArticle("Café");
  tapArticle("Thé");
  tapArticle("Eau");
  ASSERT_EQ(stockOf("Café") + " " + stockOf("Eau"), "8 0");

  forgetWrites();
  answer(true);
  press(Commande_avnF->Supp);
  EXPECT_THAT(asked(), ElementsAre("confirmation: voulez-vous vraiment supprimer "));
  EXPECT_THAT(writes(), ElementsAre(Stock, "erase relation_commande"));
  EXPECT_EQ(lines(), "1 Thé 80 80; 1 Eau 50 50") << "the first line was the selected one";
  EXPECT_EQ(stockOf("Café") + " " + stockOf("Eau"), "8 2") << "the last article tapped gets it";

  clickLine(0);
  forgetWrites();
  answer(true);
  press(Commande_avnF->Supp);
  EXPECT_THAT(writes(), ElementsAre("erase relation_commande")) << "Thé keeps no stock";
}

TEST_F(OrderTest, RemovingAsksAndNeedsALine) {
  press(Commande_avnF->Supp);
  EXPECT_THAT(asked(), IsEmpty());
  tapArticle("Café");
  forgetWrites();
  answer(false);
  press(Commande_avnF->Supp);
  EXPECT_EQ(asked().size(), 1u);
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_EQ(lines(), "1 Café 100 100");
}

TEST_F(OrderTest, LeavingTheOrderOnItsTable) {
  tapArticle("Café");
  forgetWrites();
  press(Commande_avnF->Enregistrer);
  EXPECT_THAT(writes(), ElementsAre("update commande login", "update Table_ control"));
  EXPECT_EQ(row("select etat_commande, HT, tcc from commande"), "Encours||");
  EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "ON|open|1");
  EXPECT_FALSE(Commande_avnF->Visible());
  EXPECT_FALSE(Commande_avnF->RzPanel10->isVisibleTo(Commande_avnF));
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(MenuF->Label2->Caption(), "");
  for (const Dataset* dataset :
       {&DM->Table_, &DM->commande, &DM->relation_commande, &DM->relation_commande1, &DM->sum_commande})
    EXPECT_FALSE(dataset->Filtered()) << dataset->Name();
}

TEST_F(OrderTest, WithoutALineNothingIsSavedPrintedOrClosed) {
  for (Button* button : {Commande_avnF->Enregistrer, Commande_avnF->Imprimer, Commande_avnF->Cloturer}) {
    SCOPED_TRACE(button->Caption());
    press(button);
    EXPECT_THAT(said(), ElementsAre("Opétation incomplet"));
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_TRUE(Commande_avnF->Visible());
  }
  press(Commande_avnF->Qte);
  EXPECT_FALSE(qteF->Visible());
}

TEST_F(OrderTest, FermerDeletesAnOrderWhoseLinesAreNoneOrAllGone) {
  for (const bool hadALine : {false, true}) {
    SCOPED_TRACE(hadALine);
    if (hadALine) {
      tap("T1");
      tapArticle("Café");
      answer(true);
      press(Commande_avnF->Supp);
      EXPECT_EQ(row("select etat from Table_ where ID_table=1"), "ON");
    }
    forgetWrites();
    press(Commande_avnF->Fermer);
    EXPECT_THAT(writes(), ElementsAre("update Table_ etat,control,n_commande", "erase commande"));
    EXPECT_EQ(row("select count(*) from commande"), "0");
    EXPECT_EQ(row("select etat, control, n_commande from Table_ where ID_table=1"), "OFF|open|0");
    EXPECT_FALSE(Commande_avnF->Visible());
    EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
    EXPECT_EQ(MenuF->Label2->Caption(), "");
  }
}

TEST_F(OrderTest, FermerWithLinesOnlyOpensTheMenu) {
  tapArticle("Café");
  forgetWrites();
  press(Commande_avnF->Fermer);
  EXPECT_THAT(writes(), IsEmpty());
  EXPECT_TRUE(Commande_avnF->Visible());
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
  EXPECT_EQ(MenuF->Label2->Caption(), "Active");
}

}  // namespace
}  // namespace tavoline
