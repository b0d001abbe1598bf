#include "tools/screens/Scenes.h"

#include "tools/screens/Stage.h"

namespace tavoline {

std::vector<Scene> scenes() {
  return {
      {"connexion", [](Stage& stage) { stage.type("LoginF.RzEdit2", "10"); }},
      {"mot-de-passe",
       [](Stage& stage) {
         stage.type("LoginF.RzEdit1", "1010");
         stage.tap("LoginF.RzBitBtn4");
       }},
      {"menu", [](Stage& stage) { stage.tap("LoginF.RzBitBtn2"); }},
      {"utilisateurs", [](Stage& stage) { stage.tap("MenuF.AdvSmoothButton2"); }},
      {"utilisateur", [](Stage& stage) { stage.tap("Configuration_utlisateurF.Modifier"); }},
      {"a-propos",
       [](Stage& stage) {
         stage.tap("utilisateurFF.Fermer");
         stage.tap("Configuration_utlisateurF.Quitter");
         stage.choose("N2");
       }},
  };
}

}  // namespace tavoline
