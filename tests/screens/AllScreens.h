#pragma once

#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include "Screens.h"
#include "shell/MenuU.h"
#include "support/StoreFaults.h"
#include "support/Workstation.h"

namespace tavoline {

/// All screens, made as the process makes them, on a store that a test can make refuse.
class AllScreens : public testing::Test {
 protected:
  /// With `rows` in the store before the start.
  void start(std::initializer_list<const char*> rows = {}) {
    for (const char* row : rows) at.sql(row);
    store = std::make_shared<test::StoreFaults>(Store::open(TDM::ConnectionString));
    std::vector<Creator> steps = screensInOrder();
    steps.at(1) = [this] { at.start(store); };
    ASSERT_TRUE(startUp(steps));
    MenuF->Show();
    MenuF->setWindowState(Qt::WindowNoState);
    MenuF->setGeometry(0, 0, 1024, 768);
    MenuF->RzSplitter1->setEnabled(true);
    Forms::Close("LoginF");
    at.settle();
  }

  /// Brings a screen up where it belongs: in the menu's panel, or as a window.
  void bringUp(TForm* form) {
    static const QStringList docked = {
        "Liste_produitF", "Liste_TypeF",       "Liste_fournisseurF", "liste_ClientF",
        "C_articleF",     "liste_endroitF",    "liste_tableF",       "Configuration_utlisateurF",
        "C_tableF",       "commandeF",         "Commande_avnF",      "liste_commandeF",
        "liste_caiseF",   "c_facture_achatF",  "liste_caisseF",      "liste_facture_achatF",
        "statF",          "liste_aff_caisseF", "liste_depenceF"};
    if (docked.contains(form->objectName())) form->Dock(MenuF->RzPanel4);
    form->Show();
    at.settle();
  }

  template <class T = QWidget>
  static std::vector<T*> visible(const TForm* form) {
    std::vector<T*> found;
    for (T* child : form->findChildren<T*>()) {
      if (child->isVisible() && child->window() == form->window()) found.push_back(child);
    }
    return found;
  }

  Workstation at;
  std::shared_ptr<test::StoreFaults> store;
};

}  // namespace tavoline
