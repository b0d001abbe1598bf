#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>

#include "Screens.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"

namespace tavoline {
namespace {

// What the process makes at its start besides DM, in its fixed order.
const std::vector<std::string> kOrder = {"MenuF",
                                         "Liste_produitF",
                                         "Type_produitF",
                                         "Liste_TypeF",
                                         "Liste_fournisseurF",
                                         "C_fournisseurF",
                                         "liste_ClientF",
                                         "C_clientF",
                                         "TVAF",
                                         "AproposF",
                                         "utilisateurFF",
                                         "Configuration_utlisateurF",
                                         "LoginF",
                                         "C_articleF",
                                         "liste_endroitF",
                                         "c_endroitF",
                                         "liste_tableF",
                                         "C_tableF",
                                         "commandeF",
                                         "Commande_avnF",
                                         "champsF",
                                         "liste_commandeF",
                                         "qteF",
                                         "fac_clF",
                                         "liste_facture_achatF",
                                         "c_facture_achatF",
                                         "MontantF",
                                         "liste_caiseF",
                                         "caiseF",
                                         "liste_caisseF",
                                         "C_caisseF",
                                         "Aff_caisseF",
                                         "liste_aff_caisseF",
                                         "acc_caisseF",
                                         "RenduF",
                                         "liste_depenceF",
                                         "C_depenceF",
                                         "statF",
                                         "BestF",
                                         "clavierF",
                                         "comptageF"};

/// All screens, made as the process makes them, on an empty store.
class WalkTest : public testing::Test {
 protected:
  WalkTest() {
    started_ = startUp(screensInOrder());
    if (!started_) return;
    MenuF->Show();
    MenuF->setWindowState(Qt::WindowNoState);
    MenuF->setGeometry(0, 0, 1024, 768);
    MenuF->RzSplitter1->setEnabled(true);
    Forms::Close("LoginF");
    at.settle();
  }
  void SetUp() override { ASSERT_TRUE(started_); }

  /// Brings a screen up where it belongs: in the menu's panel, or as a window.
  void bringUp(TForm* form) {
    static const QStringList docked = {"Liste_produitF",
                                       "Liste_TypeF",
                                       "Liste_fournisseurF",
                                       "liste_ClientF",
                                       "Configuration_utlisateurF",
                                       "C_articleF",
                                       "liste_endroitF",
                                       "liste_tableF",
                                       "C_tableF",
                                       "commandeF",
                                       "Commande_avnF",
                                       "liste_commandeF",
                                       "liste_facture_achatF",
                                       "c_facture_achatF",
                                       "liste_caiseF",
                                       "liste_caisseF",
                                       "liste_aff_caisseF",
                                       "liste_depenceF",
                                       "statF"};
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

 private:
  bool started_ = false;
};

TEST_F(WalkTest, ScreensAreMadeInTheFixedOrder) {
  std::vector<std::string> made, expected;
  for (const TForm* form : Forms::all()) made.push_back(form->objectName().toStdString());
  for (const std::string& name : kOrder) {
    if (Forms::find(name)) expected.push_back(name);
  }
  EXPECT_EQ(made, expected);
}

TEST_F(WalkTest, EveryScreenFitsTheSmallestDisplay) {
  for (TForm* form : Forms::all()) {
    bringUp(form);
    const QSize room = form->isWindow() ? QSize(1024, 740) : MenuF->RzPanel4->size();
    const QSize need = form->minimumSizeHint().expandedTo(form->minimumSize());
    EXPECT_TRUE(need.width() <= room.width() && need.height() <= room.height())
        << form->objectName().toStdString() << " needs " << need.width() << "x" << need.height() << " of "
        << room.width() << "x" << room.height();
    if (form != MenuF) form->Close();
  }
}

TEST_F(WalkTest, PicturesWithoutACaptionSayWhatTheyDo) {
  for (TForm* form : Forms::all()) {
    bringUp(form);
    for (const auto* button : visible<QPushButton>(form)) {
      EXPECT_FALSE(button->text().trimmed().isEmpty() && button->toolTip().isEmpty())
          << form->objectName().toStdString() << "." << button->objectName().toStdString();
      EXPECT_FALSE(button->text().isEmpty() && button->icon().isNull())
          << form->objectName().toStdString() << "." << button->objectName().toStdString()
          << " shows nothing";
    }
    if (form != MenuF) form->Close();
  }
}

TEST_F(WalkTest, AFingerCanHitWhatIsToBeTouched) {
  const auto keypad = [](const QWidget* control) { return control->inherits("tavoline::Keypad"); };
  for (TForm* form : Forms::all()) {
    bringUp(form);
    for (QWidget* control : visible(form)) {
      const bool touched = qobject_cast<QPushButton*>(control) || qobject_cast<QLineEdit*>(control) ||
                           qobject_cast<QComboBox*>(control);
      const bool part =
          qobject_cast<QAbstractSpinBox*>(control->parent()) || qobject_cast<QComboBox*>(control->parent());
      if (!touched || part || keypad(control->parentWidget())) continue;
      EXPECT_GE(control->height(), 48)
          << form->objectName().toStdString() << "." << control->objectName().toStdString();
    }
    if (form != MenuF) form->Close();
  }
}

// Tab leads through every control that takes it. A docked screen shares the round with the menu.
TEST_F(WalkTest, TheTabKeyGoesRound) {
  const auto takesTab = [](const QWidget* control) {
    return control->isVisible() && control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) &&
           !control->focusProxy() && !qobject_cast<const QMenuBar*>(control);
  };
  for (TForm* form : Forms::all()) {
    bringUp(form);
    QSet<QWidget*> wanted, reached;
    for (QWidget* control : visible(form)) {
      if (takesTab(control)) wanted.insert(control);
    }
    const auto inWindow = form->window()->findChildren<QWidget*>();
    form->activateWindow();
    at.settle();
    for (auto step = std::count_if(inWindow.begin(), inWindow.end(), takesTab); step >= 0; --step) {
      at.press(Qt::Key_Tab);
      reached.insert(QApplication::focusWidget());
    }
    for (QWidget* control : wanted - reached) {
      ADD_FAILURE() << form->objectName().toStdString() << "." << control->objectName().toStdString()
                    << " is not reached";
    }
    if (form != MenuF) form->Close();
  }
}

}  // namespace
}  // namespace tavoline
