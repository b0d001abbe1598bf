// What is seen: the tiles of tables and articles, the whole order, and its tickets.

#include <QtWidgets/QScrollBar>

#include "sales/Commande_avnU.h"
#include "sales/commandeU.h"
#include "shell/MenuU.h"
#include "support/Session.h"
#include "toolkit/report/Report.h"
#include "toolkit/report/model/Document.h"

namespace tavoline {
namespace {

class LooksTest : public testing::Test {
 protected:
  LooksTest() {
    play("store " TAVOLINE_FOLDER
         "cafeteria.sql\nstart\nlogin ab12 x\ntap AdvSmoothButton6\nin commandeF\nchoose DBLookupListBox1 1");
  }
  void play(const std::string& steps) { session.play(steps); }
  static QImage tile(const char* name) {
    return commandeF->RzFlowPanel1->findChild<ShapeButton*>(QString::fromLatin1(name))->grab().toImage();
  }
  static TileNotes told(const char* badge, const char* corner, bool nothing = false) {
    TileNotes notes;
    notes.badge = QString::fromLatin1(badge);
    notes.corner = QString::fromLatin1(corner);
    notes.nothing = nothing;
    return notes;
  }

  Session session;
};

TEST_F(LooksTest, ATileShowsWhetherItsTableIsTaken) {
  play(
      "sql update Table_ set etat='ON' where ID_table=2\nreopen Table_\ntap Fermer\ntap "
      "MenuF.AdvSmoothButton6");
  const QImage free = tile("btn0"), busy = tile("btn1"), neither = tile("btn3");
  EXPECT_EQ(free.size(), QSize(100, 108));
  EXPECT_EQ(commandeF->Image1->pixmap().size(), QSize(99, 108));
  EXPECT_EQ(commandeF->Image2->pixmap().size(), QSize(99, 108));
  const auto middleEdge = [](const QImage& looks) { return looks.pixelColor(50, 21); };
  EXPECT_GT(middleEdge(free).green(), middleEdge(free).red());
  EXPECT_GT(middleEdge(busy).red(), middleEdge(busy).green());
  EXPECT_NEAR(middleEdge(neither).red(), middleEdge(neither).green(), 12);
}

TEST_F(LooksTest, TheMapFollowsOtherWorkstationsOnlyWhileNoOrderIsOpen) {
  const QImage before = tile("btn1");
  play("sql update Table_ set etat='ON', n_commande=9 where ID_table=2");
  MenuF->ok->Click();
  EXPECT_NE(tile("btn1"), before);

  play("tap T1\nsql update Table_ set etat='OFF' where ID_table=2");
  const QImage underOrder = tile("btn1");
  MenuF->ok->Click();
  EXPECT_EQ(tile("btn1"), underOrder);
}

// A badge that stays behind, or stock that a tap moved and a tile does not know of, misleads a waiter.
TEST_F(LooksTest, TilesTellWhatIsOrderedAndLeftAndTheMapWhatRuns) {
  play("tap T1\nin Commande_avnF\nchoose DBLookupListBox1 1\ntap Café\ntap Café\ntap Thé\ntap Eau");
  const auto article = [this](const char* name) {
    session.at.settle();
    return Commande_avnF->RzFlowPanel1->findChild<ShapeButton*>(QString::fromLatin1(name))->Notes();
  };
  EXPECT_EQ(article("ig0"), told("2", "Stock 8"));
  EXPECT_EQ(article("ig1"), told("1", "")) << "no stock is kept of it";
  EXPECT_EQ(article("ig3"), told("1", "Stock 0", true));
  EXPECT_EQ(Commande_avnF->Totaux->text(), "TVA 62,7  ·  À payer 392,7 DA");
  play("row RzDBGrid1 0\nanswer Oui\ntap Supp");
  EXPECT_EQ(article("ig0"), told("", "Stock 10"));

  const auto table = [](const char* name) {
    return commandeF->RzFlowPanel1->findChild<ShapeButton*>(QString::fromLatin1(name))->Notes();
  };
  play("tap Enregistrer\nsql update Table_ set control='close' where ID_table=2");
  MenuF->ok->Click();
  EXPECT_EQ(table("btn0").below, (QStringList{"130 DA", "0 min", "Ali"}));
  EXPECT_EQ(table("btn1").mark, "object-locked");
}

TEST_F(LooksTest, AnOrderIsWhollyInSightOnTheSmallestDisplay) {
  play(
      "sql update article set designation_article='PAIN AU CHOCOLAT MAISON' where code_barre='2'\n"
      "sql update type set Type_Produit='Rafraîchissements' where code=1\n"
      "reopen Article type_produit\ntap T1\nin Commande_avnF\nchoose DBLookupListBox1 1\n"
      "tap Café\ntap Eau\ntap PAIN AU CHOCOLAT MAISON");
  const auto tiles = Commande_avnF->RzFlowPanel1->tiles<Panel>();
  EXPECT_EQ(tiles[0]->y(), tiles[1]->y());
  EXPECT_EQ(tiles[0]->size(), QSize(140, 130));
  EXPECT_EQ(tiles[0]->y(), tiles[2]->y()) << "three tiles stand side by side";
  EXPECT_FALSE(tiles[2]->visibleRegion().isEmpty());
  for (const QAbstractScrollArea* area : Commande_avnF->findChildren<QAbstractScrollArea*>())
    EXPECT_FALSE(area->horizontalScrollBar()->isVisible()) << area->objectName().toStdString();
  for (const QLabel* value : Commande_avnF->RzPanel10->findChildren<QLabel*>())
    EXPECT_LE(value->minimumSizeHint().width(), value->width()) << value->text().toStdString();
  for (const QLabel* label : Commande_avnF->findChildren<QLabel*>())
    EXPECT_TRUE(label == Commande_avnF->DBText2 ||
                label->fontInfo().pixelSize() < Commande_avnF->DBText2->fontInfo().pixelSize())
        << label->objectName().toStdString();
}

}  // namespace
}  // namespace tavoline
