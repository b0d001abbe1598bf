#include "shell/ShellTest.h"

#include "shell/AproposU.h"
#include "shell/Configuration_utlisateurU.h"
#include "shell/clavierU.h"
#include "shell/utilisateurUU.h"

namespace tavoline {

ShellTest::ShellTest() {
  at.sql(
      "insert into utilisateur (login, mot_pase, nom, prenom, role) values "
      "('boss', '1', 'Amrani', 'Lila', 'Admin'), ('kara', '2', 'Karaoui', 'Nadir', 'KeyUser'), "
      "('omar', '3', 'Hadj', 'Omar', 'User')");
}

void ShellTest::open() {
  at.create(MenuF);
  at.start();
  at.create(AproposF);
  at.create(utilisateurFF);
  at.create(Configuration_utlisateurF);
  at.create(LoginF);
  at.create(clavierF);
  MenuF->Show();
  at.settle();
}

void ShellTest::type(QWidget* input, const std::string& keys) {
  at.tap(input);
  at.type(keys);
}

void ShellTest::logIn(const std::string& login, const std::string& password) {
  if (!LoginF->isVisible()) MenuF->ChangerUtilisateur1->trigger();
  type(LoginF->RzEdit2, login);
  type(LoginF->RzEdit1, password);
  at.tap(LoginF->RzBitBtn2);
}

void ShellTest::saying(const char* message, const std::function<void()>& action) {
  const std::size_t before = at.shown().size();
  if (message) at.answers({{message}});
  action();
  EXPECT_EQ(at.shown().size() - before, message ? 1u : 0u) << (message ? message : "no box");
}

}  // namespace tavoline
