#include "sales/SalesTest.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>

#include "data/value/Clock.h"

namespace tavoline {
namespace {

const char* const Cafeteria[] = {
    "insert into utilisateur(login, mot_pase, nom, prenom, role) values ('ab12', 'x', 'Amrane', 'Ali', "
    "'User')",
    "insert into operation(n_, code_utilisateur, nom, prenom, fonction, id_caisse_active) "
    "values (1, 'ab12', 'Amrane', 'Ali', 'User', 'C001')",
    "insert into Endroit(ID_endroit, Endoit) values (1, 'Salle'), (2, 'Terrasse')",
    "insert into Table_(ID_table, \"table\", endroit, id_endroit, etat, control, n_commande) values "
    "(1, 'T1', 'Salle', 1, 'OFF', 'open', 0), (2, 'T2', 'Salle', 1, 'OFF', 'open', 0), "
    "(3, 'Terrasse', 'Terrasse', 2, 'OFF', 'open', 0), (4, 'L''angle', 'Salle', 1, 'OFF', 'open', 0), "
    "(5, 'Bizarre', 'Salle', 1, 'off', 'open', 0)",
    "insert into type(code, Type_Produit) values (1, 'Boissons'), (2, 'Plats')",
    "insert into article(code_barre, designation_article, id_categorie, qte_stock, prix_vente, desto) values "
    "('1', 'Café', 1, 10, 100, 'OUI'), ('2', 'Thé', 1, 5, 80, 'NON'), ('3', 'Jus d''orange', 1, 5, 150, "
    "'OUI'), "
    "('4', 'Eau', 1, 1, 50, 'OUI'), ('5', 'Glace', 1, null, 12.5, 'OUI'), ('6', 'Menu', 1, 5, 300, 'AUTRE'), "
    "('7', 'Plat', 2, 8, 400, 'OUI')",
    "insert into TVA(tva, utilisation) values (19, 'OUI')",
    "insert into caisse(ID_caise, nom_caisse, solde, general, \"select\") values "
    "('C000', 'Maison', 5000, 'OUI', 'OUI'), ('C001', 'Comptoir', 1000, 'NON', 'NON')",
    "insert into acce_caisse(id_caisse, login, general) values ('C001', 'ab12', 'NON')",
};

}  // namespace

void SalesTest::SetUp() {
  setClock(DateTime::of(2024, 7, 14, 12, 30, 15));
  Messages::current().show = [this](const std::string& text) { said_.push_back(text); };
  Messages::current().confirm = [this](const std::string& text, const std::string& title) {
    asked_.push_back(title + ": " + text);
    return answer_;
  };
  if (!guest_) {
    workstation_.sql("begin");
    for (const char* statement : Cafeteria) workstation_.sql(statement);
    workstation_.sql("commit");
  }
  recording_ = std::make_shared<RecordingStore>(Store::open(TDM::ConnectionString));

  workstation_.create(MenuF);
  workstation_.start(recording_);
  workstation_.create(commandeF);
  workstation_.create(Commande_avnF);
  workstation_.create(champsF);
  workstation_.create(liste_commandeF);
  workstation_.create(qteF);
  workstation_.create(fac_clF);
  workstation_.create(RenduF);
  MenuF->setWindowState(Qt::WindowNoState);  // the offscreen display is smaller than a counter's
  MenuF->setGeometry(0, 0, 1024, 768);
  MenuF->show();
  MenuF->RzSplitter1->setEnabled(true);
}

void SalesTest::TearDown() {
  EXPECT_THAT(said_, ::testing::IsEmpty()) << "a box that the test did not foresee";
  Clock::set({});
}

void SalesTest::store(const std::string& sql) {
  workstation_.sql(sql);
}

std::string SalesTest::row(const std::string& select) {
  const Workstation::Rows rows = workstation_.sql(select);
  std::string values;
  if (rows.empty()) return values;
  for (const std::string& value : rows[0]) values += (&value == &rows[0][0] ? "" : "|") + value;
  return values;
}

std::string SalesTest::stockOf(const std::string& article) {
  return row("select qte_stock from article where designation_article='" + article + "'");
}

void SalesTest::setClock(DateTime now) {
  Clock::set([now] { return now; });
}

void SalesTest::type(QLineEdit* input, const std::string& text) {
  press(input);
  input->selectAll();
  if (text.empty()) workstation_.press(Qt::Key_Delete);
  workstation_.type(text);
}

void SalesTest::openMap() {
  press(MenuF->AdvSmoothButton6);
  ASSERT_TRUE(commandeF->Visible());
}

void SalesTest::choosePlace(int place) {
  commandeF->DBLookupListBox1->Choose(place);
}

void SalesTest::tap(const std::string& table) {
  for (auto* tile : commandeF->RzFlowPanel1->tiles<ShapeButton>())
    if (tile->Caption() == table) return press(tile);
  FAIL() << "no tile " << table;
}

void SalesTest::openOrder(const std::string& table) {
  openMap();
  choosePlace(1);
  tap(table);
  chooseCategory(1);
}

void SalesTest::chooseCategory(int category) {
  Commande_avnF->DBLookupListBox1->Choose(category);
}

Panel* SalesTest::articleTile(const std::string& designation) {
  workstation_.settle();
  for (auto* tile : Commande_avnF->RzFlowPanel1->tiles<Panel>()) {
    if (tile->Caption() != designation) continue;
    Commande_avnF->RzFlowPanel1->findChild<QScrollArea*>()->ensureWidgetVisible(tile);
    return tile;
  }
  ADD_FAILURE() << "no tile " << designation;
  return nullptr;
}

void SalesTest::tapArticle(const std::string& designation, int category) {
  if (Commande_avnF->DBLookupListBox1->KeyValue() != Value(category)) chooseCategory(category);
  if (Panel* tile = articleTile(designation)) press(tile->findChild<ShapeButton*>());
}

void SalesTest::clickLine(int line) {
  auto* grid = Commande_avnF->RzDBGrid1;
  workstation_.settle();
  workstation_.tapAt(grid->viewport(), grid->visualRect(grid->model()->index(line, 1)).center());
}

std::string SalesTest::printed(const std::function<void()>& launch, const Report& report) {
  during(launch, [] { QApplication::activeModalWidget()->close(); });
  return report.pages() ? report.pages()->dump() : "";
}

void SalesTest::closeOrder() {
  during(Commande_avnF->Cloturer, [this] { finish(); });
}

std::string SalesTest::finish() {
  return printed([this] { press(RenduF->Enregistrer); }, *Commande_avnF->frxReport1);
}

std::vector<std::string> SalesTest::tableTiles() {
  std::vector<std::string> found;
  for (auto* tile : commandeF->RzFlowPanel1->tiles<ShapeButton>())
    found.push_back(tile->objectName().toStdString() + " " + tile->Caption());
  return found;
}

std::vector<std::string> SalesTest::articleTiles() {
  std::vector<std::string> found;
  for (auto* tile : Commande_avnF->RzFlowPanel1->tiles<Panel>())
    found.push_back(tile->objectName().toStdString() + " " + tile->findChild<ShapeButton*>()->Caption() +
                    " " + tile->findChild<Label*>()->Caption());
  return found;
}

QImage SalesTest::looks(const char* tile) {
  return commandeF->RzFlowPanel1->findChild<ShapeButton*>(QString::fromLatin1(tile))->grab().toImage();
}

std::string SalesTest::lines() {
  const QAbstractItemModel* model = Commande_avnF->RzDBGrid1->model();
  std::string all;
  for (int line = 0; line < model->rowCount(); ++line) {
    if (line) all += "; ";
    for (int column = 0; column < model->columnCount(); ++column)
      all += (column ? " " : "") + model->index(line, column).data().toString().toStdString();
  }
  return all;
}

}  // namespace tavoline
