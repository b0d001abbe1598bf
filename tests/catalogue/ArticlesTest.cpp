#include <QtCore/QFile>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>

#include "catalogue/CatalogueFixture.h"
#include "toolkit/report/Document.h"
#include "toolkit/report/Report.h"

namespace tavoline {
namespace {

class Articles : public CatalogueTest {
 protected:
  void SetUp() override {
    ws.sql("insert into type(code, Type_Produit) values (1, 'BOISSONS'), (2, 'PLATS')");
    ws.sql(
        "insert into article(code_barre, designation_article, id_categorie, qte_min, qte_stock, desto) values"
        " ('1', 'EAU', 1, 5, 4, 'OUI'), ('2', 'THÉ', 1, 5, 4, 'NON'), ('3', 'TAJINE', 2, 0, 0, 'OUI'),"
        " ('4', 'COUSCOUS', 2, 1, 2, 'OUI'), ('5', 'EAU', 2, 0, 1, 'OUI')");
    start();
    open(Liste_produitF);
  }
  std::string codes() {
    std::string all;
    for (std::size_t i = 0; i < DM->Article.RecordCount(); ++i) all += DM->Article.ValueAt(i, 0).text();
    return all;
  }
};

TEST_F(Articles, TheNextCodeIsTheCountPlusOneEvenIfItExists) {
  ws.sql("delete from article where code_barre = '3'");
  ws.tap("Liste_produitF.Ajouter");
  EXPECT_EQ(ws.text("C_articleF.DBEdit1"), "5");
  EXPECT_FALSE(C_articleF->DBEdit1->isEnabled());
  EXPECT_FALSE(MenuF->RzGroupBar2->isEnabled());
  ws.settle();
  ws.type("café crème");
  EXPECT_EQ(ws.text("C_articleF.DBEdit2"), "CAFÉ CRÈME");
  ws.answers({{kMandatory}, {testing::HasSubstr("existe déjà")}});
  ws.tap("C_articleF.Enregistrer");  // neither category nor stock mode
  C_articleF->RzDBLookupComboBox1->Choose(1);
  C_articleF->RzDBComboBox1->Text("OUI");
  ws.tap("C_articleF.Enregistrer");
  EXPECT_TRUE(C_articleF->Visible());
  EXPECT_EQ(ws.text("C_articleF.DBEdit2"), "CAFÉ CRÈME");
  ws.tap("C_articleF.Fermer");
  EXPECT_EQ(ws.value("select count(*) from article"), "4");
}

TEST_F(Articles, AnArticleIsEnteredAndItsCodesSortAsText) {
  ws.tap("Liste_produitF.Ajouter");
  ws.settle();
  ws.type("jus");
  C_articleF->RzDBLookupComboBox1->Choose(1);
  C_articleF->RzDBComboBox1->Text("NON");
  C_articleF->DBEdit8->SetFocus();
  ws.settle();
  ws.type("150,5");
  ws.tap("C_articleF.Enregistrer");
  EXPECT_EQ(ws.sql("select designation_article, id_categorie, desto, prix_vente, qte_stock from article "
                   "where code_barre = '6'"),
            (Workstation::Rows{{"JUS", "1", "NON", "150.5", ""}}));
  ws.sql("update article set code_barre = '10' where code_barre = '6'");
  DM->Article.Reopen();
  EXPECT_EQ(codes(), "1102345");
}

TEST_F(Articles, TheSearchHasSevenCasesOfExactEquality) {
  struct Case {
    const char *code, *name;
    int type;
    const char* found;
  };
  for (const Case& c :
       {Case{"2", "", 0, "2"}, Case{"1", "eau", 0, "1"}, Case{"1", "thé", 0, ""}, Case{"", "eau", 0, "15"},
        Case{"", "ea", 0, ""}, Case{"", "", 2, "345"}, Case{"3", "", 2, "3"}, Case{"3", "", 1, ""},
        Case{"", "eau", 2, "5"}, Case{"5", "eau", 2, "5"}, Case{"1", "eau", 2, ""}}) {
    ws.tap("Liste_produitF.Initialiser");
    EXPECT_EQ(codes(), "12345");
    Liste_produitF->RzEdit1->SetFocus();
    ws.settle();
    ws.type(c.code);
    Liste_produitF->RzEdit3->SetFocus();
    ws.settle();
    ws.type(c.name);
    if (c.type) Liste_produitF->RzDBLookupComboBox1->Choose(c.type);
    ws.settle();
    ws.type("\n");
    EXPECT_EQ(codes(), c.found) << c.code << "/" << c.name << "/" << c.type;
  }
  // With nothing given the filter stays as it is.
  ws.tap("Liste_produitF.Initialiser");
  DM->Article.FilterBy("code_barre='3'");
  ws.tap("Liste_produitF.Filtrer");
  EXPECT_EQ(codes(), "3");
  MenuF->AdvSmoothButton9->setFocus();  // from anywhere in the window
  ws.press(Qt::Key_Escape);
  EXPECT_EQ(codes(), "12345");
  DM->Article.FilterBy("code_barre='3'");
  ws.tap("Liste_produitF.Quitter");
  EXPECT_FALSE(DM->Article.Filtered());
}

TEST_F(Articles, TheKeyboardWalksThroughTheInputs) {
  ws.tap("Liste_produitF.Modifier");
  C_articleF->DBEdit2->SetFocus();
  const std::vector<QWidget*> path = {C_articleF->DBEdit2, C_articleF->RzDBLookupComboBox1,
                                      C_articleF->DBEdit4, C_articleF->DBEdit6,
                                      C_articleF->DBEdit7, C_articleF->DBEdit8,
                                      C_articleF->DBEdit11};
  for (std::size_t i = 1; i < path.size(); ++i) {
    ws.press(i % 2 ? Qt::Key_Return : Qt::Key_Down);
    EXPECT_TRUE(path[i]->hasFocus()) << i;
  }
  ws.press(Qt::Key_Return);
  EXPECT_TRUE(C_articleF->DBEdit11->hasFocus());
  C_articleF->DBEdit8->SetFocus();
  for (std::size_t i = path.size() - 2; i-- > 0;) {
    ws.press(Qt::Key_Up);
    EXPECT_TRUE(path[i]->hasFocus()) << i;
  }
  ws.answers({{testing::HasSubstr("")}, {testing::HasSubstr("")}});
  ws.press(Qt::Key_Up);  // into the code, which is disabled
  C_articleF->RzDBComboBox1->SetFocus();
  ws.press(Qt::Key_Up);
  EXPECT_TRUE(C_articleF->DBEdit11->hasFocus());
  C_articleF->RzDBComboBox1->SetFocus();
  ws.press(Qt::Key_Return);
  EXPECT_EQ(ws.shown().size(), 2u);
}

TEST_F(Articles, LowStocksAreMarkedInTheirColumnAlone) {
  const std::vector<bool> low = {true, false, true, false, false};
  for (std::size_t i = 0; i < low.size(); ++i) {
    const QColor colour = Liste_produitF->DBGridEh1->OnCellColour(DM->Article, i, "qte_stock");
    EXPECT_EQ(colour.isValid(), low[i]) << i;
    EXPECT_FALSE(Liste_produitF->DBGridEh1->OnCellColour(DM->Article, i, "prix_vente").isValid());
  }
}

TEST_F(Articles, OnceAPickerADoubleClickPicksUntilTheEnd) {
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_TRUE(C_articleF->Visible());
  ws.tap("C_articleF.Fermer");
  Liste_produitF->RzRapidFireButton1->setVisible(true);
  DM->Achat.Insert();
  DM->Article.Locate("code_barre", "4");
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_FALSE(Liste_produitF->Visible());
  EXPECT_EQ(DM->Achat["code_barre"].text(), "4");
  EXPECT_EQ(DM->Achat["article"].text(), "COUSCOUS");
  DM->Achat.Cancel();
  open(Liste_produitF);
  DM->Achat.Insert();
  Liste_produitF->DBGridEh1->OnDblClick();
  EXPECT_FALSE(C_articleF->Visible());
  DM->Achat.Cancel();
}

TEST_F(Articles, APictureIsTakenWholeAndABrokenOneRefused) {
  const std::string good = (ws.folder() / "photo.png").string(), bad = (ws.folder() / "cassée.png").string();
  QImage photo(3000, 2000, QImage::Format_RGB32);
  photo.fill(Qt::darkGreen);
  ASSERT_TRUE(photo.save(QString::fromStdString(good)));
  QFile broken(QString::fromStdString(bad));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("\x89PNG\r\n\x1a\n et rien d'autre");
  broken.close();
  ws.tap("Liste_produitF.Modifier");
  ws.answers({{testing::HasSubstr("image"), bad},
              {testing::HasSubstr("cassée.png")},
              {testing::HasSubstr("image"), good}});
  ws.tap("C_articleF.InsertImage");
  EXPECT_FALSE(DM->Article.Modified());
  ws.tap("C_articleF.InsertImage");
  ws.tap("C_articleF.Enregistrer");
  const SharedBytes stored = DM->Article["image"].get().toBytes();
  ASSERT_TRUE(stored);
  const QImage kept = QImage::fromData(stored->data(), static_cast<int>(stored->size()));
  EXPECT_LE(std::max(kept.width(), kept.height()), 1024);
  EXPECT_NEAR(kept.width() * 2.0 / kept.height(), 3.0, 0.05);
  EXPECT_EQ(QGuiApplication::clipboard()->image().size(), kept.size());
}

TEST_F(Articles, TheFirstOfAnEmptyListIsNumberOne) {
  ws.sql("delete from article");
  DM->Article.Reopen();
  ws.tap("Liste_produitF.x7");  // no row, no question
  ws.tap("Liste_produitF.Ajouter");
  EXPECT_EQ(ws.text("C_articleF.DBEdit1"), "1");
}

TEST_F(Articles, TheListOwnsADocumentThatNothingLaunches) {
  ws.tap("Liste_produitF.Imprimer");
  EXPECT_FALSE(Liste_produitF->frxReport1->pages());
  Liste_produitF->frxReport1->PrepareReport();
  EXPECT_THAT(Liste_produitF->frxReport1->pages()->dump(), testing::HasSubstr("Liste des Produits"));
}

}  // namespace
}  // namespace tavoline
