#pragma once

#include <QtWidgets/QVBoxLayout>

#include "support/Workstation.h"
#include "toolkit/forms/TForm.h"

namespace tavoline {

/// A screen on which a test puts its controls one under the other.
class TestScreen : public TForm {
 public:
  explicit TestScreen(const char* name = "EssaiF") : TForm(name) {
    new QVBoxLayout(this);
    resize(640, 480);
  }

  template <class Control>
  Control* add(const char* name) {
    auto* control = new Control(this);
    control->setObjectName(QString::fromUtf8(name));
    layout()->addWidget(control);
    return control;
  }
  template <class Control>
  Control* add(const char* name, const char* source, const char* field) {
    auto* control = add<Control>(name);
    control->setDataSourceName(QString::fromUtf8(source));
    control->setDataField(QString::fromUtf8(field));
    return control;
  }

  int shows = 0, closes = 0;

 protected:
  void FormShow() override { ++shows; }
  void FormClose() override { ++closes; }
};

/// A workstation with two desks, three places and one test screen.
class ToolkitTest : public testing::Test {
 protected:
  ToolkitTest() {
    station.sql(
        "insert into caisse (ID_caise, nom_caisse, solde, general) values"
        " ('C001', 'Comptoir', 1200.5, 'NON'), ('C002', 'Terrasse', 0, 'OUI')");
    station.sql(
        "insert into Endroit (ID_endroit, Endoit) values (1, 'Salle'), (2, 'Terrasse'), (3, 'Étage')");
    station.sql("insert into type (code, Type_Produit) values (10, 'Boissons'), (20, 'Plats')");
    station.sql(
        "insert into article (code_barre, designation_article, id_categorie, prix_vente, desto) values"
        " ('1', 'Thé', 10, 80, 'NON'), ('2', 'Couscous', 20, 600, 'OUI')");
    station.start();
    screen = &station.create<TestScreen>();
  }

  /// Binds and shows the screen with what the test has put on it.
  void open() {
    screen->BindControls();
    screen->Show();
    station.settle();
  }

  Workstation station;
  TestScreen* screen = nullptr;
};

}  // namespace tavoline
