#include "support/Workstation.h"

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <map>

#include "toolkit/forms/Taps.h"
#include "tools/store/Creation.h"

namespace tavoline {

namespace {
constexpr int patience = 10000;  // ms that a condition may take on a busy machine
}

Workstation::Workstation() : own_(std::in_place), folder_(own_->path()) {
  tool::createStore((folder_ / "BDD.mdb").string());
  settleIn();
}

Workstation::Workstation(const std::filesystem::path& folder) : folder_(folder) {
  settleIn();
}

void Workstation::settleIn() {
  std::filesystem::current_path(folder_);
  door_.emplace("BDD.mdb", "BDD.mdb", sqlite::Connection::Role::Maker);
  Messages& messages = Messages::current();
  messages.show = [this](const std::string& text, const std::string&) { answer(text); };
  messages.confirm = [this](const std::string& text, const std::string&) { return answer(text) == "Oui"; };
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
  std::filesystem::current_path(before_);
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
  const auto take = [](void* all, int columns, char** values, char**) {
    auto& row = static_cast<Rows*>(all)->emplace_back();
    for (int i = 0; i < columns; ++i) row.emplace_back(values[i] ? values[i] : "");
    return 0;
  };
  if (sqlite3_exec(door_->handle(), statement.c_str(), take, &rows, nullptr) != SQLITE_OK)
    ADD_FAILURE() << sqlite3_errmsg(door_->handle()) << " in " << statement;
  return rows;
}

std::string Workstation::value(const std::string& statement) {
  const Rows rows = sql(statement);
  return rows.empty() || rows[0].empty() ? std::string() : rows[0][0];
}

QWidget* Workstation::find(std::string_view formAndControl) {
  const auto dot = std::min(formAndControl.find('.'), formAndControl.size());
  const std::string_view form = formAndControl.substr(0, dot);
  QWidget* found = dot == formAndControl.size()
                       ? Forms::find(form)
                       : Forms::control(form, std::string(formAndControl.substr(dot + 1)).c_str());
  if (!found) ADD_FAILURE() << formAndControl << " does not exist";
  return found;
}

std::string Workstation::text(std::string_view formAndControl) {
  const QWidget* found = find(formAndControl);
  return found ? found->property("text").toString().toStdString() : std::string();
}

bool Workstation::reachable(QWidget* control, QPoint place) {
  settle();
  if (!control) return false;
  const QWidget* modal = QApplication::activeModalWidget();
  const QWidget* under = control->window()->childAt(control->mapTo(control->window(), place));
  const bool covered = under && under != control && !control->isAncestorOf(under);
  const std::string obstacle = !control->isVisible()                           ? "hidden"
                               : !control->isEnabled()                         ? "disabled"
                               : modal && control->window() != modal->window() ? "behind a modal screen"
                               : covered ? "covered by " + under->objectName().toStdString()
                                         : "";
  if (!obstacle.empty()) ADD_FAILURE() << control->objectName().toStdString() << " is " << obstacle;
  return obstacle.empty();
}

void Workstation::tap(QWidget* control) {
  if (control) tapAt(control, control->rect().center());
}

void Workstation::tapAt(QWidget* control, QPoint place) {
  if (!reachable(control, place)) return;
  QWidget* window = control->window();
  Taps::forget();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, place));
  settle();
}

void Workstation::doubleTapAt(QWidget* control, QPoint place) {
  if (!reachable(control, place)) return;
  QWidget* window = control->window();
  Taps::forget();
  QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, control->mapTo(window, place));
  settle();
}

void Workstation::type(std::string_view text) {
  for (const QChar sign : QString::fromUtf8(text.data(), qsizetype(text.size()))) {
    static const std::map<char16_t, Qt::Key> keys = {
        {u'\n', Qt::Key_Return}, {u'\t', Qt::Key_Tab}, {u'\b', Qt::Key_Backspace}};
    if (const auto key = keys.find(sign.unicode()); key != keys.end()) {
      press(key->second);
      continue;
    }
    QWidget* focus = QApplication::focusWidget();
    if (!focus) return void(ADD_FAILURE() << "nothing has the focus to type into");
    const int key = sign.unicode() < 128 ? sign.toUpper().unicode() : 0;
    QKeyEvent down(QEvent::KeyPress, key, {}, QString(sign)), up(QEvent::KeyRelease, key, {}, QString(sign));
    QCoreApplication::sendEvent(focus, &down);
    QCoreApplication::sendEvent(QApplication::focusWidget() ? QApplication::focusWidget() : focus, &up);
  }
  settle();
}

void Workstation::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWindow* window = QGuiApplication::focusWindow();
  if (!window) return void(ADD_FAILURE() << "no window is active to press a key in");
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
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected box: " << text;
    return {};
  }
  const Answer next = expected_.front();
  expected_.pop_front();
  EXPECT_THAT(text, next.to);
  return next.with;
}

}  // namespace tavoline
