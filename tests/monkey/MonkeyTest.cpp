// Somebody who knows nothing taps and types everywhere, in all roles. Nothing may crash, and the store has to
// be sound afterwards. The same again: TAVOLINE_MONKEY_SEED, which a failure tells; for longer:
// TAVOLINE_MONKEY_STEPS.

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QtWidgets>
#include <fstream>
#include <random>

#include "Screens.h"
#include "shell/MenuU.h"
#include "support/Workstation.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/forms/TForm.h"
#include "toolkit/report/output/Printing.h"
#include "tools/store/Check.h"
#include "tools/store/demo/Demo.h"

namespace tavoline {
namespace {

int setting(const char* name, int otherwise) {
  const char* const text = std::getenv(name);
  return text ? std::atoi(text) : otherwise;
}

/// Does one gesture after the other, also in the midst of one that opened a box or a modal screen.
class Monkey {
 public:
  Monkey(unsigned seed, int steps) : chance_(seed), left_(steps) {
    Messages& messages = Messages::current();
    messages.show = [this](const std::string& text, const std::string&) {
      EXPECT_NE(text, "");
      ++boxes_;
    };
    messages.confirm = [this](const std::string&, const std::string&) { return oneIn(2); };
    messages.openPicture = [this] { return std::string(oneIn(2) ? "" : "picture.png"); };
    messages.openFile = [this](const std::string&, const std::string&) {
      return std::string(oneIn(2) ? "" : "no/such/file");
    };
    messages.saveFile = [this](const std::string&, const std::string&, const std::string& name) {
      return oneIn(2) ? std::string() : name;
    };
    report::PrintSystem::current() = {[] { return QStringList(); }, [] { return QString(); },
                                      [](QPrinter&, QWidget*) { return false; }};
    const QImage picture(16, 16, QImage::Format_RGB32);
    picture.save("picture.png");
  }

  void play() {
    next();
    while (left_ > 0) QCoreApplication::exec();  // left where the menu ends the program
    goHome();
  }

  int boxes() const { return boxes_; }
  const std::set<QString>& seen() const { return seen_; }

 private:
  // The next gesture is waiting before this one begins: it goes on within whatever loop that opens.
  void next() {
    QTimer::singleShot(0, qApp, [this] {
      if (--left_ <= 0) return QCoreApplication::exit(0);
      next();
      gesture();
    });
  }

  int below(std::size_t limit) {
    return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(chance_);
  }
  bool oneIn(int n) { return below(static_cast<std::size_t>(n)) == 0; }
  template <class T>
  T among(const std::vector<T>& all) {
    return all[static_cast<std::size_t>(below(all.size()))];
  }

  void gesture() {
    for (const TForm* form : Forms::all())
      if (form->isVisible()) seen_.insert(form->objectName());
    QWidget* const window = front();
    if (!window) return MenuF->Show();
    if (!MenuF->RzSplitter1->isEnabled() && !Forms::find("LoginF")->isVisible()) return Forms::Show("LoginF");
    if (window->objectName() == "LoginF" && oneIn(3)) return logIn();
    if (oneIn(40)) return QTest::mouseDClick(target(*window), Qt::LeftButton);
    if (oneIn(3)) return type();
    if (oneIn(200)) window->resize(300 + below(1300), 300 + below(800));
    tap(*window);
  }

  QWidget* front() {
    if (QWidget* const popup = QApplication::activePopupWidget()) return popup;
    if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
    std::vector<QWidget*> windows;
    for (QWidget* const window : QApplication::topLevelWidgets())
      if (window->isVisible() && window->isEnabled()) windows.push_back(window);
    return windows.empty() ? nullptr : among(windows);
  }

  QWidget* target(QWidget& window) {
    std::vector<QWidget*> controls;
    for (QWidget* const control : window.findChildren<QWidget*>())
      if (control->isVisible() && control->isEnabled() && !control->visibleRegion().isEmpty() &&
          (control->inherits("QAbstractButton") || control->inherits("QLineEdit") ||
           control->inherits("QComboBox") || control->inherits("QAbstractItemView")))
        controls.push_back(control);
    return controls.empty() ? &window : among(controls);
  }

  void tap(QWidget& window) {
    QWidget* control = oneIn(3) ? nullptr : target(window);
    QPoint place;
    if (control) {
      place = control->visibleRegion().boundingRect().center();
    } else {
      const QPoint there(below(std::size_t(window.width())), below(std::size_t(window.height())));
      control = window.childAt(there);
      if (!control) control = &window;
      place = control->mapFrom(&window, there);
    }
    const QPointer<QWidget> still = control;
    const Qt::MouseButton button = oneIn(30) ? Qt::RightButton : Qt::LeftButton;
    QTest::mousePress(control, button, {}, place);
    if (oneIn(20)) QCoreApplication::processEvents();
    if (still) QTest::mouseRelease(still, button, {}, place);
  }

  void type() {
    static const std::vector<QString> texts = {
        "1",    "12,5", "-3",  "L'eau", "\"",         "%",     "99999999999", "0,001", "01/01/2024",
        "Café", "é'",   "10.", "abc",   "31/02/2024", "1e308", "=1+1",        " ",     "ÀÏ漢字"};
    static const std::vector<Qt::Key> keys = {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Escape,
                                              Qt::Key_Down,   Qt::Key_Up,  Qt::Key_Delete,  Qt::Key_Home,
                                              Qt::Key_End,    Qt::Key_F2,  Qt::Key_Space,   Qt::Key_PageDown};
    QWidget* const at = QApplication::focusWidget();
    if (!at) return;
    if (oneIn(2)) {
      const QPointer<QWidget> still = at;
      for (const QChar letter : among(texts)) {
        if (!still) return;
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        QCoreApplication::sendEvent(still, &press);
      }
      return;
    }
    const Qt::KeyboardModifiers modifiers = oneIn(15) ? Qt::ControlModifier : Qt::NoModifier;
    QTest::keyClick(at, among(keys), modifiers);
  }

  void logIn() {
    static const std::vector<std::pair<const char*, const char*>> staff = {
        {"10", "1010"}, {"10", "1010"}, {"20", "2020"}, {"31", "3131"}};
    const auto [login, password] = among(staff);
    auto* const code = Forms::control("LoginF", "RzEdit2");
    auto* const word = Forms::control("LoginF", "RzEdit1");
    for (const auto& [control, text] : {std::pair(code, login), std::pair(word, password)}) {
      auto* const input = qobject_cast<QLineEdit*>(control);
      input->setFocus();
      input->clear();
      QTest::keyClicks(input, text);
    }
    QTest::keyClick(word, Qt::Key_Return);
  }

  static void goHome() {
    for (int i = 0; i < 50; ++i) {
      if (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
      if (QWidget* const modal = QApplication::activeModalWidget()) modal->close();
      QCoreApplication::processEvents();
    }
  }

  std::mt19937 chance_;
  int left_;
  int boxes_ = 0;
  std::set<QString> seen_;
};

TEST(Monkey, TapsAndTypesEverywhereAndNothingFalls) {
  const test::TemporaryFolder folder;
  tool::createDemo((folder.path() / "BDD.mdb").string());
  const int seed = setting("TAVOLINE_MONKEY_SEED", 1), steps = setting("TAVOLINE_MONKEY_STEPS", 2500);
  SCOPED_TRACE("seed " + std::to_string(seed));
  {
    Workstation at(folder.path());
    ASSERT_TRUE(startUp(screensInOrder()));
    MenuF->Show();
    Monkey monkey(static_cast<unsigned>(seed), steps);
    monkey.play();
    EXPECT_GT(monkey.seen().size(), 8U) << "it saw too little";
    EXPECT_GT(monkey.boxes(), 0);
    std::printf("%zu screens seen, %d boxes\n", monkey.seen().size(), monkey.boxes());
  }
  // What it did to the restaurant is its business; a file is sound or is not.
  for (const std::string& finding : tool::checkStore((folder.path() / "BDD.mdb").string()))
    for (const char* const damage : {"Fichier abîmé", "Valeurs d'un autre genre", "Clés en double"})
      EXPECT_FALSE(finding.starts_with(damage)) << finding;
}

}  // namespace
}  // namespace tavoline
