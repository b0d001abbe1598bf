#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>

#include "catalogue/C_articleU.h"
#include "catalogue/Liste_produitU.h"
#include "support/Session.h"
#include "toolkit/report/Report.h"
#include "toolkit/report/model/Document.h"

namespace tavoline {
namespace {

class ArticleList : public testing::Test {
 protected:
  void SetUp() override {
    play("store " TAVOLINE_FOLDER
         "articles.sql\nstart\nlogin boss 1\ntap AdvSmoothButton9\nin Liste_produitF");
  }
  std::string play(const std::string& steps) { return session.play(steps); }

  Session session;
};

TEST_F(ArticleList, LowStocksAreMarkedInTheirColumnAlone) {
  const std::vector<bool> low = {true, false, true, false, false};
  for (std::size_t i = 0; i < low.size(); ++i) {
    const QColor colour = Liste_produitF->DBGridEh1->OnCellColour(DM->Article, i, "qte_stock");
    EXPECT_EQ(colour.isValid(), low[i]) << i;
    EXPECT_FALSE(Liste_produitF->DBGridEh1->OnCellColour(DM->Article, i, "prix_vente").isValid());
  }
}

TEST_F(ArticleList, OnceAPickerADoubleClickPicksUntilTheEnd) {
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_TRUE(C_articleF->Visible());
  play("tap C_articleF.Fermer");
  Liste_produitF->RzRapidFireButton1->setVisible(true);
  play("insert Achat\nlocate Article code_barre 4");
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_EQ(play("data Achat code_barre article"),
            "insert code_barre=4 article=COUSCOUS\ncloses Liste_produitF\n");
  play("cancel Achat\ntap MenuF.AdvSmoothButton9\ninsert Achat");
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_FALSE(C_articleF->Visible());
}

}  // namespace
}  // namespace tavoline
