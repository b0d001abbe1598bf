#include "support/Workstation.h"

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "tools/store/Creation.h"

namespace tavoline {

namespace {
constexpr int patience = 10000;  // ms that a condition may take on a busy machine
}

Workstation::Workstation() : before_(std::filesystem::current_path()) {
  std::string name = (std::filesystem::temp_directory_path() / "tavoline-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  folder_ = name;
  ownFolder_ = true;
  std::filesystem::current_path(folder_);
  tool::createStore("BDD.mdb");
  settleIn();
}

Workstation::Workstation(const std::filesystem::path& folder)
    : folder_(folder), before_(std::filesystem::current_path()) {
  std::filesystem::current_path(folder_);
  settleIn();
}

void Workstation::settleIn() {
  sqlite3* door = nullptr;
  if (sqlite3_open("BDD.mdb", &door) != SQLITE_OK) ADD_FAILURE() << "the store cannot be opened on the side";
  door_.reset(door);
  sqlite3_busy_timeout(door, patience);

  Messages& messages = Messages::current();
  messages.show = [this](const std::string& text) { answer(text); };
  messages.confirm = [this](const std::string& text, const std::string& title) {
    titles_.push_back(title);
    return answer(text) == "Oui";
  };
  messages.openPicture = [this] { return answer("image"); };
  messages.openFile = [this](const std::string& title, const std::string&) { return answer(title); };
  messages.saveFile = [this](const std::string& title, const std::string&, const std::string&) {
    return answer(title);
  };
}

Workstation::~Workstation() {
  for (const Answer& missing : expected_)
    ADD_FAILURE() << "this box never came: " << testing::PrintToString(missing.to);
  while (!Forms::all().empty()) delete Forms::all().back();
  for (const auto& forget : forget_) forget();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  delete DM;
  DM = nullptr;
  Messages::current() = Messages::real();
  door_.reset();
  std::filesystem::current_path(before_);
  if (ownFolder_) std::filesystem::remove_all(folder_);
}

void Workstation::start() {
  start(Store::open(TDM::ConnectionString));
}

void Workstation::start(std::shared_ptr<Store> store) {
  DM = new TDM(std::move(store));
  Forms::BindControls();
}

Workstation::Rows Workstation::sql(const std::string& statement) {
  Rows rows;
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(door_.get(), statement.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    ADD_FAILURE() << sqlite3_errmsg(door_.get()) << " in " << statement;
    return rows;
  }
  int step;
  while ((step = sqlite3_step(prepared)) == SQLITE_ROW) {
    std::vector<std::string>& row = rows.emplace_back();
    for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
      const unsigned char* text = sqlite3_column_text(prepared, column);
      row.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
    }
  }
  if (step != SQLITE_DONE) ADD_FAILURE() << sqlite3_errmsg(door_.get()) << " in " << statement;
  sqlite3_finalize(prepared);
  return rows;
}

std::string Workstation::value(const std::string& statement) {
  const Rows rows = sql(statement);
  return rows.empty() || rows[0].empty() ? std::string() : rows[0][0];
}

QWidget* Workstation::find(std::string_view formAndControl) {
  const auto dot = formAndControl.find('.');
  const std::string_view form = formAndControl.substr(0, dot);
  QWidget* found = Forms::find(form);
  if (dot != std::string_view::npos) {
    found = Forms::control(form, std::string(formAndControl.substr(dot + 1)).c_str());
  }
  if (!found) ADD_FAILURE() << formAndControl << " does not exist";
  return found;
}

std::string Workstation::text(std::string_view formAndControl) {
  const QWidget* found = find(formAndControl);
  return found ? found->property("text").toString().toStdString() : std::string();
}

bool Workstation::reachable(QWidget* control, QPoint place) {
  if (!control) return false;
  const std::string name = control->objectName().toStdString();
  const QWidget* modal = QApplication::activeModalWidget();
  const QWidget* under = control->window()->childAt(control->mapTo(control->window(), place));
  if (!control->isVisible())
    ADD_FAILURE() << name << " is hidden";
  else if (!control->isEnabled())
    ADD_FAILURE() << name << " is disabled";
  else if (modal && control->window() != modal->window())
    ADD_FAILURE() << name << " is behind a modal screen";
  else if (under && under != control && !control->isAncestorOf(under)) {
    ADD_FAILURE() << name << " is covered by " << under->objectName().toStdString();
  } else
    return true;
  return false;
}

void Workstation::tap(QWidget* control) {
  if (control) tapAt(control, control->rect().center());
}

void Workstation::tapAt(QWidget* control, QPoint place) {
  settle();
  if (!reachable(control, place)) return;
  QWidget* window = control->window();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, place));
  settle();
}

void Workstation::doubleTapAt(QWidget* control, QPoint place) {
  settle();
  if (!reachable(control, place)) return;
  QWidget* window = control->window();
  QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, place));
  settle();
}

void Workstation::type(std::string_view text) {
  for (const QChar sign : QString::fromUtf8(text.data(), qsizetype(text.size()))) {
    switch (sign.unicode()) {
      case '\n':
        press(Qt::Key_Return);
        continue;
      case '\t':
        press(Qt::Key_Tab);
        continue;
      case '\b':
        press(Qt::Key_Backspace);
        continue;
      default:
        break;
    }
    QWidget* focus = QApplication::focusWidget();
    if (!focus) {
      ADD_FAILURE() << "nothing has the focus to type into";
      return;
    }
    const int key = sign.unicode() < 128 ? sign.toUpper().unicode() : 0;
    QKeyEvent down(QEvent::KeyPress, key, {}, QString(sign)), up(QEvent::KeyRelease, key, {}, QString(sign));
    QCoreApplication::sendEvent(focus, &down);
    QCoreApplication::sendEvent(QApplication::focusWidget() ? QApplication::focusWidget() : focus, &up);
  }
  settle();
}

void Workstation::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWindow* window = QGuiApplication::focusWindow();
  if (!window) {
    ADD_FAILURE() << "no window is active to press a key in";
    return;
  }
  QTest::keyClick(window, key, modifiers);
  settle();
}

void Workstation::settle() {
  // Whatever a round of events posts is served by the next one.
  for (int round = 0; round < 4; ++round) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

void Workstation::waitUntil(const std::function<bool()>& condition) {
  EXPECT_TRUE(QTest::qWaitFor(condition, patience)) << "waited in vain";
}

void Workstation::during(const std::function<void()>& action, const std::function<void()>& inModal) {
  QWidget* before = QApplication::activeModalWidget();
  bool entered = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal == before) return;
    watch.stop();
    entered = true;
    inModal();
    settle();
    if (QApplication::activeModalWidget() != modal) return;
    ADD_FAILURE() << modal->objectName().toStdString() << " is still open";
    modal->close();
  });
  watch.start(1);
  action();
  EXPECT_TRUE(entered) << "no modal screen opened";
}

void Workstation::answers(std::vector<Answer> expected) {
  for (Answer& next : expected) expected_.push_back(std::move(next));
}

std::string Workstation::answer(const std::string& text) {
  shown_.push_back(text);
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected box: " << text;
    return {};
  }
  const Answer next = expected_.front();
  expected_.pop_front();
  EXPECT_THAT(text, next.to);
  return next.with;
}

void Workstation::screenshot(QWidget* form, const std::string& file) {
  settle();
  EXPECT_TRUE(form->grab().save(QString::fromStdString(file), "PNG")) << file << " cannot be written";
}

}  // namespace tavoline
