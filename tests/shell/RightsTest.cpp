#include "shell/ShellTest.h"
#include "toolkit/controls/Button.h"

namespace tavoline {
namespace {

// Everything that a role decides, and some of what stays open to all.
TEST_F(ShellTest, ARoleEnablesItsControlsAndNoOthers) {
  open();
  OtherScreen articles("Liste_produitF");
  auto* erase = new Button(&articles);
  erase->setObjectName("x7");

  const struct {
    const char* control;
    bool admin, keyUser, user;
  } rights[] = {
      {"AdvSmoothButton9", true, true, false},
      {"AdvSmoothButton7", true, true, false},
      {"AdvSmoothButton8", true, true, false},
      {"AdvSmoothButton4", true, true, false},
      {"AdvSmoothButton5", true, true, false},
      {"AdvSmoothButton6", true, true, true},
      {"AdvSmoothButton3", true, false, false},
      {"AdvSmoothButton1", true, true, false},
      {"AdvSmoothButton2", true, false, false},
      {"Produit1", true, true, false},
      {"Fournisseur1", true, true, false},
      {"Client1", true, true, false},
      {"ypedeProduit1", true, true, false},
      {"ListedesTable1", true, true, false},
      {"Endroit1", true, true, false},
      {"ModifierTVA1", true, true, false},
      {"CreationdeCaisse1", true, false, false},
      {"Caise1", true, true, false},
      {"FICHIER1", true, true, true},
      {"Actualiser1", true, true, true},
      {"ChangerUtilisateur1", true, true, true},
      {"Fermer1", true, true, true},
      {"Apropos1", true, true, true},
      {"RzGroupBar2", true, true, true},
  };
  const auto expect = [&](const char* login, const char* password, auto granted) {
    erase->setEnabled(true);
    logIn(login, password);
    for (const auto& right : rights) {
      const QObject* control = MenuF->findChild<QObject*>(QString::fromLatin1(right.control));
      ASSERT_TRUE(control) << right.control;
      EXPECT_EQ(control->property("enabled").toBool(), granted(right)) << login << " " << right.control;
    }
    EXPECT_FALSE(erase->isEnabled()) << login;
  };
  expect("omar", "3", [](const auto& right) { return right.user; });
  expect("boss", "1", [](const auto& right) { return right.admin; });
  expect("kara", "2", [](const auto& right) { return right.keyUser; });
  expect("omar", "3", [](const auto& right) { return right.user; });
}

}  // namespace
}  // namespace tavoline
