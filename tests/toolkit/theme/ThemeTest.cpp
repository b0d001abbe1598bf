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
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

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
  EXPECT_EQ(ground(), QColor(theme().wrongSoft));
  edit->Red(false);
  EXPECT_EQ(ground(), own);
}

double brightness(QColor colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

TEST_F(ThemeTest, LettersAreReadableOnWhatTheyStandOnInBothThemes) {
  using T = Theme;
  const std::vector<std::pair<QRgb T::*, std::vector<QRgb T::*>>> pairs = {
      {&T::ink, {&T::ground, &T::card, &T::stripe, &T::shade, &T::accentSoft}},
      {&T::ink, {&T::wrongSoft, &T::alert, &T::freeSoft, &T::waitingSoft}},
      {&T::muted, {&T::ground, &T::card, &T::stripe}},
      {&T::accent, {&T::ground, &T::card, &T::shade, &T::accentSoft}},
      {&T::onAccent, {&T::accent, &T::accentDark}},
      {&T::accentSoft, {&T::accent}},
      {&T::onBar, {&T::bar, &T::barDown}},
      {&T::onBarMuted, {&T::bar}},
      {&T::wrong, {&T::ground, &T::card, &T::wrongSoft}},
      {&T::free, {&T::ground}},
      {&T::card, {&T::ink}}};
  for (const Shade shade : {Shade::Light, Shade::Dark})
    for (const auto& [letters, grounds] : pairs)
      for (const auto& ground : grounds) {
        const QColor ink(theme(shade).*letters), paper(theme(shade).*ground);
        const auto [dark, light] = std::minmax({brightness(ink), brightness(paper)});
        EXPECT_GE((light + 0.05) / (dark + 0.05), 4.5)
            << ink.name().toStdString() << " on " << paper.name().toStdString();
      }
}

// Too large, and a screen that needs 1024 by 720 no longer fits.
TEST_F(ThemeTest, TheScaleFollowsTheDisplayAndLeavesRoomForEveryScreen) {
  const struct {
    QSize display;
    double told, scale;
  } cases[] = {{{800, 600}, 0, 1.0},   {{1024, 768}, 0, 1.0},   {{1366, 768}, 0, 1.0},
               {{1920, 1080}, 0, 1.4}, {{2560, 1080}, 0, 1.4},  {{3840, 2160}, 0, 2.8},
               {{1024, 768}, 1.4, 1},  {{1920, 1080}, 2, 1.45}, {{3840, 2160}, 2, 2},
               {{1920, 1080}, 1, 1},   {{1600, 900}, 1.2, 1.2}, {{800, 600}, 0.8, 0.8}};
  for (const auto& [display, told, scale] : cases)
    EXPECT_DOUBLE_EQ(scaleFor(display, told), scale) << display.width() << " by " << display.height();
}

}  // namespace
}  // namespace tavoline
