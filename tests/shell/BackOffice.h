#pragma once

#include <gtest/gtest.h>

#include "shell/MenuU.h"
#include "support/Workstation.h"

namespace tavoline {

/// A workstation with the menu and some screens of the back office; `open` docks a list as the menu does.
class BackOfficeTest : public testing::Test {
 protected:
  template <class... Screens>
  void startWith(Screens*&... screens) {
    ws.create(MenuF);
    ws.start();
    (ws.create(screens), ...);
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
