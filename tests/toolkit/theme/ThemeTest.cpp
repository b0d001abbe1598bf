#include "toolkit/ToolkitFixture.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/DBCheckBox.h"
#include "toolkit/controls/DBComboBox.h"
#include "toolkit/controls/DBEdit.h"
#include "toolkit/controls/DateEdit.h"
#include "toolkit/controls/Lookup.h"
#include "toolkit/theme/Appearance.h"
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

// Too large, and a screen that needs 1024 by 720 no longer fits.
TEST_F(ThemeTest, TheScaleFollowsTheDisplayAndLeavesRoomForEveryScreen) {
  const struct {
    QSize display;
    double scale;
  } cases[] = {{{800, 600}, 1.0},   {{1024, 768}, 1.0},  {{1366, 768}, 1.0},
               {{1920, 1080}, 1.4}, {{2560, 1080}, 1.4}, {{3840, 2160}, 2.8}};
  for (const auto& [display, scale] : cases)
    EXPECT_DOUBLE_EQ(scaleFor(display), scale) << display.width() << " by " << display.height();
}

}  // namespace
}  // namespace tavoline
