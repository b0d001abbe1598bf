#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBCheckBox.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Lookup.h"
#include "toolkit/theme/Theme.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QIcon>
#include <QtWidgets/QApplication>

namespace tavoline {
namespace {

class ThemeTest : public ToolkitTest {};

TEST_F(ThemeTest, QtSpeaksFrenchAndIconsAreThere) {
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Annuler");
  EXPECT_EQ(QCoreApplication::translate("QAbstractFileIconProvider", "Folder"), "Dossier");
  EXPECT_TRUE(QIcon::hasThemeIcon(QStringLiteral("document-print")));
  EXPECT_FALSE(QIcon::fromTheme(QStringLiteral("document-print")).pixmap(32).isNull());
}

TEST_F(ThemeTest, AnInputLeftEmptyIsPaintedRedAndBack) {
  auto* edit = screen->add<Edit>("RzEdit1");
  screen->add<Edit>("RzEdit2");
  open();
  screen->findChild<Edit*>(QStringLiteral("RzEdit2"))->SetFocus();
  const auto ground = [&] { return edit->grab().toImage().pixelColor(20, edit->height() / 2); };
  const QColor own = ground();
  edit->Red(true);
  EXPECT_EQ(ground(), QColor(theme::wrongSoft));
  edit->Red(false);
  EXPECT_EQ(ground(), own);
}

}  // namespace
}  // namespace tavoline
