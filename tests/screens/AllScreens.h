#pragma once

#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include "shell/MenuU.h"
#include "support/Session.h"

namespace tavoline {

/// All screens, made as the process makes them.
class AllScreens : public testing::Test {
 protected:
  /// With `rows` in the store before the start.
  void start(std::initializer_list<const char*> rows = {}) {
    for (const char* row : rows) at.sql(row);
    session.play("start");
    MenuF->RzSplitter1->setEnabled(true);
    Forms::Close("LoginF");
    at.settle();
  }

  /// Brings a screen up where it belongs: in the menu's panel, or as a window.
  void bringUp(TForm* form) {
    static const QStringList docked =
        QStringLiteral(
            "Liste_produitF Liste_TypeF Liste_fournisseurF liste_ClientF C_articleF liste_endroitF "
            "liste_tableF "
            "Configuration_utlisateurF C_tableF commandeF Commande_avnF liste_commandeF liste_caiseF caiseF "
            "c_facture_achatF liste_caisseF liste_facture_achatF statF liste_aff_caisseF liste_depenceF")
            .split(u' ');
    if (docked.contains(form->objectName())) form->Dock(MenuF->RzPanel4);
    form->Show();
    at.settle();
  }

  template <class T = QWidget>
  static std::vector<T*> visible(const TForm* form) {
    std::vector<T*> found;
    for (T* child : form->findChildren<T*>())
      if (child->isVisible() && child->window() == form->window()) found.push_back(child);
    return found;
  }

  /// Takes a step with every screen brought up in turn; `name` says which.
  void onEach(const std::function<void(TForm& form, const std::string& name)>& step) {
    start();
    for (TForm* form : Forms::all()) {
      bringUp(form);
      step(*form, form->objectName().toStdString());
      if (form != MenuF) form->Close();
    }
  }

  Session session;
  Workstation& at = session.at;
};

}  // namespace tavoline
