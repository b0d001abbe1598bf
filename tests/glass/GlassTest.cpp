// What only a real window shows: stacking, focus, a finger that comes down twice, the frame of a window.

#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtGui/QCursor>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>

#include "sales/Commande_avnU.h"
#include "sales/champsU.h"
#include "shell/MenuU.h"
#include "support/Session.h"
#include "toolkit/controls/Keypad.h"

namespace tavoline {
namespace {

/// What comes down on the windows of the program, whether it is taken or dropped.
class Presses : public QObject {
 public:
  Presses() { QCoreApplication::instance()->installEventFilter(this); }
  int presses = 0, releases = 0;
  QPointer<QObject> window;  // of the last press

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!watched->isWindowType()) return false;
    if (event->type() == QEvent::MouseButtonPress) ++presses, window = watched;
    if (event->type() == QEvent::MouseButtonRelease) ++releases;
    return false;
  }
};

class Glass : public testing::Test {
 public:
  ~Glass() override { presses.reset(); }

 protected:
  /// The program behind its login, with its screens in real windows.
  Glass() {
    session.play("store " TAVOLINE_FOLDER "cafeteria.sql\nstart");
    presses = std::make_unique<Presses>();
    at.control<Edit>("LoginF.RzEdit2")->Text("ab12");
    at.control<Edit>("LoginF.RzEdit1")->Text("x");
    at.control<Button>("LoginF.RzBitBtn2")->Click();
    at.waitUntil([] { return MenuF->isActiveWindow() && MenuF->RzSplitter1->isEnabled(); });
  }

  static void drive(const QStringList& steps) { ASSERT_EQ(QProcess::execute("xdotool", steps), 0); }
  /// A finger on the display, `times` in quick turn, and until the program has heard all of it.
  void tapAt(QPoint place, int times = 1) {
    const int before = presses->presses, lifted = presses->releases;
    drive({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "--repeat",
           QString::number(times), "--delay", "60", "1"});
    at.waitUntil([&] { return presses->presses >= before + times && presses->releases >= lifted + times; });
    at.settle();
  }
  void tap(QWidget* control, int times = 1) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(control->window()));
    tapAt(control->mapToGlobal(control->rect().center()), times);
  }
  void waitForFocus(const QWidget* control) {
    at.waitUntil([&] { return control->window()->isActiveWindow() && control->hasFocus(); });
  }
  void openOrder() {
    session.play(
        "tap AdvSmoothButton6\nin commandeF\nchoose DBLookupListBox1 1\ntap T1\n"
        "in Commande_avnF\nchoose DBLookupListBox1 1");
  }

  Session session;
  Workstation& at = session.at;
  std::unique_ptr<Presses> presses;
};

// Two presses on "Ajouter" make one row. The entry stays before the menu, has the focus, and is given up by
// its frame.
TEST_F(Glass, ADoubleTapOpensOneEntryThatStaysInFrontAndIsGivenUpByItsFrame) {
  TForm* list = Forms::find("liste_endroitF");
  list->Dock(MenuF->RzPanel4);
  list->Show();
  at.settle();
  const std::string places = at.value("select count(*) from Endroit");
  tap(at.control("liste_endroitF.Ajouter"), 2);
  TForm* entry = Forms::find("c_endroitF");
  ASSERT_TRUE(entry->Visible());
  EXPECT_EQ(at.value("select count(*) from Endroit"), places) << "a place without a name was stored";
  EXPECT_EQ(DM->Endroit.State(), DatasetState::Insert);
  auto* name = at.control("c_endroitF.RzDBEdit2");
  waitForFocus(name);

  tapAt(MenuF->AdvPanel1->mapToGlobal(MenuF->AdvPanel1->rect().center()));
  EXPECT_EQ(presses->window, MenuF->windowHandle());
  tapAt(name->mapToGlobal(name->rect().center()));
  EXPECT_EQ(presses->window, entry->windowHandle()) << "the entry is behind the menu";

  waitForFocus(name);
  drive({"key", "alt+F4"});
  at.waitUntil([&] { return !entry->Visible(); });
  EXPECT_EQ(DM->Endroit.State(), DatasetState::Browse);
  EXPECT_TRUE(MenuF->RzGroupBar2->isEnabled());
}

// On each opening what the keypad types takes the place of what was there.
TEST_F(Glass, TheKeypadTypesOverTheDiscountOnEveryOpening) {
  openOrder();
  session.play("tap Café");
  for (const char* typed : {"10", "25"}) {
    at.during(
        [] { Commande_avnF->Remisse->Click(); },
        [&] {
          waitForFocus(champsF->DBEdit1);
          for (const char* key = typed; *key; ++key)
            tap(champsF->findChild<Keypad*>()->findChild<QWidget*>(QStringLiteral("key") + QChar(*key)));
          EXPECT_EQ(champsF->DBEdit1->text().toStdString(), typed);
          tap(champsF->Fermer);
        });
  }
}

// A tap beside the rows leaves the current one highlighted; the line of a tapped article is marked, and the
// dataset does not move.
TEST_F(Glass, TheListOfTheOrderShowsItsCurrentRowAndMarksTheLineTapped) {
  openOrder();
  session.play("tap Café");
  DBGrid* grid = Commande_avnF->RzDBGrid1;
  tapAt(grid->viewport()->mapToGlobal(grid->viewport()->rect().bottomRight() - QPoint(20, 20)));
  ASSERT_TRUE(grid->selectionModel()->hasSelection());
  const std::string first = at.value("select article from relation_commande");
  session.play("tap Thé");
  EXPECT_EQ(at.value("select count(*) from relation_commande"), "2");
  EXPECT_EQ(DM->relation_commande1["article"].text(), first);
  EXPECT_TRUE(grid->model()->index(1, 0).data(Qt::BackgroundRole).isValid());
  EXPECT_EQ(grid->selectionModel()->selectedRows().value(0).row(), 0);
}

}  // namespace
}  // namespace tavoline
