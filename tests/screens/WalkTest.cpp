#include <QtGui/QAccessible>
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
  for (const std::string& name : test::words(kOrder))
    if (Forms::find(name)) expected.push_back(name);
  EXPECT_EQ(made, expected);
}

TEST_F(WalkTest, EveryScreenFitsTheSmallestDisplay) {
  onEach([](const TForm& form, const std::string& name) {
    const QSize room = form.isWindow() ? QSize(1024, 740) : MenuF->RzPanel4->size();
    const QSize need = form.minimumSizeHint().expandedTo(form.minimumSize());
    EXPECT_TRUE(need.width() <= room.width() && need.height() <= room.height())
        << name << " needs " << need.width() << "x" << need.height() << " of " << room.width() << "x"
        << room.height();
  });
}

TEST_F(WalkTest, AFingerCanHitWhatIsToBeTouchedAndPicturesSayWhatTheyDo) {
  onEach([](const TForm& form, const std::string& name) {
    for (const QWidget* control : visible(&form)) {
      SCOPED_TRACE(name + "." + control->objectName().toStdString());
      const auto* button = qobject_cast<const QPushButton*>(control);
      if (button) {
        EXPECT_FALSE(button->text().trimmed().isEmpty() && button->toolTip().isEmpty());
        EXPECT_FALSE(button->text().isEmpty() && button->icon().isNull()) << "it shows nothing";
      }
      const bool touched =
          button || qobject_cast<const QLineEdit*>(control) || qobject_cast<const QComboBox*>(control);
      const QWidget* around = control->parentWidget();
      const bool part = qobject_cast<const QAbstractSpinBox*>(around) ||
                        qobject_cast<const QComboBox*>(around) || around->inherits("tavoline::Keypad");
      if (touched && !part) {
        EXPECT_GE(control->height(), 48);
      }
    }
  });
}

// By the interface that screen readers use: what is worked with has a role that says how, and a name in
// words.
TEST_F(WalkTest, AScreenReaderCanSayEveryControl) {
  static const QRegularExpression word(QStringLiteral("[\\p{L}\\p{N}]"));
  int told = 0;
  onEach([&](const TForm& form, const std::string& name) {
    for (QWidget* control : visible(&form)) {
      const QWidget* around = control->parentWidget();
      const bool part =
          qobject_cast<const QComboBox*>(around) || qobject_cast<const QAbstractSpinBox*>(around);
      const bool worked =
          qobject_cast<const QAbstractButton*>(control) || (control->focusPolicy() & Qt::TabFocus);
      if (!worked || part || control->focusProxy() || control->inherits("QTableCornerButton")) continue;
      if (qobject_cast<const QAbstractScrollArea*>(around)) continue;  // its viewport
      SCOPED_TRACE(name + "." + control->objectName().toStdString() + " " +
                   control->metaObject()->className());
      QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control);
      ASSERT_TRUE(reader);
      const QString says = reader->text(QAccessible::Name);
      EXPECT_TRUE(says.contains(word)) << "it says nothing: " << says.toStdString();
      const bool pane = qobject_cast<const QAbstractScrollArea*>(control);  // what is in it is walked
      EXPECT_TRUE(pane || (reader->role() != QAccessible::NoRole && reader->role() != QAccessible::Client))
          << "nobody can tell what it is";
      ++told;
    }
  });
  EXPECT_GE(told, 400);
}

// Tab leads through every control that takes it. A docked screen shares the round with the menu.
TEST_F(WalkTest, TheTabKeyGoesRound) {
  const auto takesTab = [](const QWidget* control) {
    return control->isVisible() && control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) &&
           !control->focusProxy() && !qobject_cast<const QMenuBar*>(control);
  };
  onEach([&](TForm& form, const std::string& name) {
    QSet<QWidget*> wanted, reached;
    for (QWidget* control : visible(&form))
      if (takesTab(control)) wanted.insert(control);
    const auto inWindow = form.window()->findChildren<QWidget*>();
    if (!wanted.isEmpty()) form.activateWindow();
    at.settle();
    for (auto step = std::count_if(inWindow.begin(), inWindow.end(), takesTab); step >= 0; --step) {
      at.press(Qt::Key_Tab);
      reached.insert(QApplication::focusWidget());
    }
    for (const QWidget* control : wanted - reached)
      ADD_FAILURE() << name << "." << control->objectName().toStdString() << " is not reached";
  });
}

}  // namespace
}  // namespace tavoline
