#pragma once

#include "catalogue/C_articleU.h"
#include "catalogue/C_tableU.h"
#include "catalogue/C_typeU.h"
#include "catalogue/Liste_TypeU.h"
#include "catalogue/Liste_produitU.h"
#include "catalogue/TVAU.h"
#include "catalogue/c_endroitU.h"
#include "catalogue/liste_endroitU.h"
#include "catalogue/liste_tableU.h"
#include "shell/BackOffice.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/Lookup.h"

namespace tavoline {

/// The menu and all screens of the catalogue.
class CatalogueTest : public BackOfficeTest {
 protected:
  void start() {
    startWith(Liste_produitF, Type_produitF, Liste_TypeF, TVAF, C_articleF, liste_endroitF, c_endroitF,
              liste_tableF, C_tableF);
  }
};

}  // namespace tavoline
