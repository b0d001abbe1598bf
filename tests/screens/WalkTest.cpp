#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>

#include "screens/AllScreens.h"

namespace tavoline {
namespace {

// What the process makes at its start besides DM, in its fixed order.
const char* const kOrder =
    "MenuF Liste_produitF Type_produitF Liste_TypeF Liste_fournisseurF C_fournisseurF "
    "liste_ClientF C_clientF TVAF AproposF utilisateurFF Configuration_utlisateurF LoginF "
    "C_articleF liste_endroitF c_endroitF liste_tableF C_tableF commandeF Commande_avnF champsF "
    "liste_commandeF qteF fac_clF liste_facture_achatF c_facture_achatF MontantF liste_caiseF "
    "caiseF liste_caisseF C_caisseF Aff_caisseF liste_aff_caisseF acc_caisseF RenduF "
    "liste_depenceF C_depenceF statF BestF clavierF comptageF";

class WalkTest : public AllScreens {};

TEST_F(WalkTest, ScreensAreMadeInTheFixedOrder) {
  start();
  std::vector<std::string> made, expected;
  for (const TForm* form : Forms::all()) made.push_back(form->objectName().toStdString());
  for (const std::string& name : words(kOrder)) {
    if (Forms::find(name)) expected.push_back(name);
  }
  EXPECT_EQ(made, expected);
}

TEST_F(WalkTest, EveryScreenFitsTheSmallestDisplay) {
  start();
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
  start();
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
  start();
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
  start();
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
    if (!wanted.isEmpty()) form->activateWindow();
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
