#include "shell/Rights.h"

#include "shell/MenuU.h"

namespace tavoline {

namespace {

struct Right {
  QObject* control;
  bool admin, keyUser, user;
};

}  // namespace

void grantRights(TMenuF& menu, std::string_view role) {
  constexpr bool yes = true, no = false;
  const Right rights[] = {
      //                           Admin KeyUser User
      {menu.AdvSmoothButton9, yes, yes, no},   // Articles
      {menu.AdvSmoothButton7, yes, yes, no},   // Clients
      {menu.AdvSmoothButton8, yes, yes, no},   // Fournisseurs
      {menu.AdvSmoothButton4, yes, yes, no},   // Facture D'Achat
      {menu.AdvSmoothButton5, yes, yes, no},   // Dépenses
      {menu.AdvSmoothButton6, yes, yes, yes},  // Commande
      {menu.AdvSmoothButton3, yes, no, no},    // Statistique
      {menu.AdvSmoothButton1, yes, yes, no},   // Historique des commandes
      {menu.AdvSmoothButton2, yes, no, no},    // Utilisateurs
      {menu.Produit1, yes, yes, no},
      {menu.Fournisseur1, yes, yes, no},
      {menu.Client1, yes, yes, no},
      {menu.ypedeProduit1, yes, yes, no},
      {menu.ListedesTable1, yes, yes, no},
      {menu.Endroit1, yes, yes, no},
      {menu.ModifierTVA1, yes, yes, no},
      {menu.CreationdeCaisse1, yes, no, no},
      {menu.Caise1, yes, yes, no},
  };
  for (const Right& right : rights) {
    const bool granted = role == "Admin" ? right.admin : role == "KeyUser" ? right.keyUser : right.user;
    right.control->setProperty("enabled", granted);
  }
}

}  // namespace tavoline
