#pragma once

#include <gtest/gtest.h>

#include "catalogue/C_articleU.h"
#include "catalogue/C_tableU.h"
#include "catalogue/C_typeU.h"
#include "catalogue/Liste_TypeU.h"
#include "catalogue/Liste_produitU.h"
#include "catalogue/TVAU.h"
#include "catalogue/c_endroitU.h"
#include "catalogue/liste_endroitU.h"
#include "catalogue/liste_tableU.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/Lookup.h"

namespace tavoline {

/// A workstation with the menu and all screens of the catalogue; `open` docks a list as the menu does.
class CatalogueTest : public testing::Test {
 protected:
  void start() {
    ws.create(MenuF);
    ws.start();
    ws.create(Liste_produitF);
    ws.create(Type_produitF);
    ws.create(Liste_TypeF);
    ws.create(TVAF);
    ws.create(C_articleF);
    ws.create(liste_endroitF);
    ws.create(c_endroitF);
    ws.create(liste_tableF);
    ws.create(C_tableF);
    MenuF->Show();
    MenuF->RzSplitter1->setEnabled(true);
  }
  void open(TForm* list) {
    list->Dock(MenuF->RzPanel4);
    list->Show();
    ws.settle();
  }

  Workstation ws;
};

inline constexpr const char* kMandatory = "Saisissez le code de l'élément en cours";
inline constexpr const char* kDelete = "voulez-vous vraiment supprimer";

}  // namespace tavoline
