#include "support/Session.h"

#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>
#include <fstream>
#include <set>
#include <sstream>

#include "Screens.h"
#include "data/value/Clock.h"
#include "data/value/Regional.h"
#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "support/PassingStore.h"
#include "support/Workstation.h"
#include "toolkit/controls/Button.h"
#include "toolkit/controls/Lookup.h"

namespace tavoline {

namespace {

using test::takeWord;

class BlankScreen : public TForm {
 public:
  explicit BlankScreen(const std::string& name) : TForm(name.c_str()) {
    new QVBoxLayout(this);
    resize(640, 480);
    Ready();
  }
};

std::string unquoted(const std::string& text) {
  return text.size() > 1 && text.front() == '"' && text.back() == '"' ? text.substr(1, text.size() - 2)
                                                                      : text;
}

}  // namespace

const test::Verbs<Session> Session::kVerbs(
    "screens",
    {{"store FILE", "SQL of a file beside the transcript, run on the side", &Session::file},
     {"sql STATEMENT", "a statement on the side, as any SQLite tool runs it", &Session::sql},
     {"stored ...", "the rows of a select on the side, without that word", &Session::stored},
     {"start", "the program, up to its login", &Session::start},
     {"login CODE PASSWORD", "goes through the login", &Session::login},
     {"quietly STEP", "a step of which only boxes and failures are told", &Session::quietly},
     {"arrive CODE PASSWORD", "quietly the start and the login", &Session::arrive},
     {"screen NAME", "a blank screen, where the program has none of this name yet", &Session::screen},
     {"make KIND NAME [PROPERTY=VALUE]...", "puts a control below the others on the screen, which it shows",
      &Session::make},
     {"hear CONTROL", "tells from now on when its handler is called", &Session::hear},
     {"clock TEXT", "sets it", &Session::clock},
     {"picture FILE [W H]", "makes a picture, or one that is broken", &Session::picture},
     {"in SCREEN", "where the controls of the steps are, unless told as SCREEN.CONTROL", &Session::in},
     {"tap CONTROL", "a button, an entry of a menu, or a tile by its caption", &Session::tap},
     {"click CONTROL", "a button by code, hidden ones too", &Session::click},
     {"type TEXT", "into what has the focus; \\n is Return, \\t Tab, \\b backspace", &Session::type},
     {"press KEY", "in what has the focus", &Session::press},
     {"set CONTROL TEXT", "what the control holds, as any driver does; on or off", &Session::set},
     {"over CONTROL TEXT", "types over what it holds", &Session::over},
     {"choose LIST KEY", "a row of a look-up list", &Session::choose},
     {"row GRID NUMBER", "a click on a row, from 0", &Session::row},
     {"twice GRID NUMBER", "a double click on a row", &Session::twice},
     {"answer TEXT", "to the next question or file box; a box without one is answered Non", &Session::answer},
     {"leave [SCREEN]", "closes a window, the one in front, by the window's own means", &Session::leave},
     {"loop STEP", "takes a step in the event loop that the process runs in, and says how that ends",
      &Session::loop},
     {"show CONTROL...", "what each holds, and its state; or \"on\"", &Session::show},
     {"disabled SCREEN", "all that is disabled there", &Session::disabled},
     {"focus", "where the keyboard is", &Session::focus},
     {"grid GRID", "its rows", &Session::grid},
     {"tiles PANEL", "its tiles", &Session::tiles},
     {"pages", "the words of the document in the preview, a line each as they stand there", &Session::pages},
     {"data DATASET FIELD...", "state and current row", &Session::data},
     {"rows DATASET FIELD...", "the visible rows", &Session::rows},
     {"filters", "all filters in force", &Session::filters},
     {"filter DATASET TEXT", "shows only these rows", &Session::filter},
     {"locate DATASET FIELD VALUE", "goes to the first row that has this", &Session::locate},
     {"edit DATASET FIELD=VALUE...", "changes the current row", &Session::edit},
     {"reopen DATASET...", "closes and opens it", operation(&Dataset::Reopen)},
     {"insert DATASET...", "begins a row", operation(&Dataset::Insert)},
     {"post DATASET...", "keeps what was changed", operation(&Dataset::Post)},
     {"cancel DATASET...", "gives it up", operation(&Dataset::Cancel)},
     {"first DATASET...", "goes to its first row", operation(&Dataset::First)},
     {"last DATASET...", "goes to its last row", operation(&Dataset::Last)}});

std::function<void(Session&, std::string&)> Session::operation(void (Dataset::*does)()) {
  return [does](Session&, std::string& names) {
    for (const std::string& name : test::words(names)) (dataset(name).*does)();
  };
}

/// Tells every write that the store accepted.
class Session::TellingStore : public test::PassingStore {
 public:
  TellingStore(std::shared_ptr<Store> inner, Session& session)
      : PassingStore(std::move(inner)), session_(session) {}

 protected:
  void passWrite(const Request& write, const std::function<RowId()>& pass) override {
    if (session_.beforeWrite) session_.beforeWrite();
    const RowId row = pass();
    std::string line = std::string(1, "+~-~"[write.kind]) + " " + write.table;
    if (write.kind == Request::Update || write.kind == Request::Erase) line += "." + std::to_string(row);
    for (const auto& [name, value] : write.fields) line += " " + name + "=" + told(value);
    if (session_.script_) session_.script_->say(line);
    if (session_.afterWrite) session_.afterWrite();
  }

 private:
  Session& session_;
};

Session::Session() {
  listen();
}

Session::Session(const std::filesystem::path& folder) : at(folder) {
  listen();
}

void Session::listen() {
  std::string start = "14/07/2024 12:30:15";
  clock(start);
  // Between the steps a test answers by the workstation's own means.
  messages_ = Messages::current();
  Messages& messages = Messages::current();
  messages.show = [this](const std::string& text, const std::string& detail) {
    if (!script_) return messages_.show(text, detail);
    std::string told = text, folder = at.folder().string() + '/';  // another one each time
    if (const auto place = told.find(folder); place != std::string::npos) told.erase(place, folder.size());
    script_->say("says \"" + told + '"');
  };
  messages.confirm = [this](const std::string& text, const std::string& title) {
    if (!script_) return messages_.confirm(text, title);
    return ask((title == "confirmation" ? "" : title + ": ") + text) == "Oui";
  };
  messages.openPicture = [this] { return script_ ? ask("image") : messages_.openPicture(); };
  messages.openFile = [this](const std::string& title, const std::string& filter) {
    return script_ ? ask(title) : messages_.openFile(title, filter);
  };
  messages.saveFile = [this](const std::string& title, const std::string& filter, const std::string& name) {
    return script_ ? ask(title) : messages_.saveFile(title, filter, name);
  };
}

Session::~Session() {
  Clock::set({});
}

std::string Session::ask(const std::string& text) {
  std::string answer = answers_.empty() ? "Non" : answers_.front();
  if (!answers_.empty()) answers_.pop_front();
  script_->say("asks \"" + text + "\" -> " + (answer.empty() ? "nothing" : answer));
  return answer;
}

void Session::play(test::Transcript& script) {
  script_ = &script;
  run();
  for (const std::string& answer : answers_) script.say("nobody asked for " + answer);
  script_ = nullptr;
}

std::string Session::play(const std::string& steps) {
  return test::answers(steps, [this](test::Transcript& script) { play(script); });
}

void Session::run() {
  while (script_->next()) {
    perform(script_->step());
    if (!modals_.empty() && QApplication::activeModalWidget() != modals_.back()) return;
  }
  if (modals_.empty()) return;
  ADD_FAILURE() << modals_.back()->objectName().toStdString() << " is still open";
  if (auto* form = dynamic_cast<TForm*>(modals_.back())) return form->Close();
  modals_.back()->close();
}

void Session::perform(const std::string& step) {
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [this] {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || std::find(modals_.begin(), modals_.end(), modal) != modals_.end()) return;
    modals_.push_back(modal);
    at.settle();
    tellScreens();
    run();
    modals_.pop_back();
  });
  watch.start(1);
  script_->attempt([&] { kVerbs.perform(*this, step); });
  tellScreens();
}

void Session::tellScreens() {
  std::set<std::string> now;
  for (const TForm* form : Forms::all())
    if (form->Visible()) now.insert(form->objectName().toStdString());
  if (const QWidget* modal = QApplication::activeModalWidget()) now.insert(modal->objectName().toStdString());
  for (const std::string& name : open_)
    if (!now.contains(name)) script_->say("closes " + name);
  for (const std::string& name : now)
    if (!open_.contains(name)) script_->say("opens " + name);
  open_ = now;
}

void Session::start(std::string&) {
  const auto store = std::make_shared<TellingStore>(Store::open(TDM::ConnectionString), *this);
  std::vector<Creator> steps = screensInOrder();
  steps.at(1) = [&] { at.start(store); };
  if (!startUp(steps)) return void(MenuF = nullptr);
  MenuF->setWindowState(Qt::WindowNoState);  // the offscreen display is smaller than a counter's
  MenuF->setGeometry(0, 0, 1024, 768);
  MenuF->Show();
  at.settle();
}

void Session::login(std::string& rest) {
  if (!LoginF->Visible()) MenuF->ChangerUtilisateur1->trigger();
  const std::string code = takeWord(rest);
  std::string login = "LoginF.RzEdit2 " + code, password = "LoginF.RzEdit1 " + rest, go = "LoginF.RzBitBtn2";
  over(login);
  over(password);
  tap(go);
}

void Session::arrive(std::string& rest) {
  std::string start = "start", login = "login " + rest;
  quietly(start);
  quietly(login);
}

void Session::quietly(std::string& step) {
  const std::size_t own = script_->at();  // a modal screen lets the steps behind this one be taken within it
  perform(step);
  script_->forget(own, [](const std::string& line) {
    return !line.starts_with("says ") && !line.starts_with("asks ") && !line.starts_with("! ");
  });
}

void Session::file(std::string& name) {
  std::ifstream in(std::filesystem::path(script_->file()).replace_filename(name));
  std::ostringstream text;
  text << in.rdbuf();
  if (!in) throw std::runtime_error("cannot be read");
  std::istringstream statements(text.str());
  at.sql("begin");
  for (std::string statement; std::getline(statements >> std::ws, statement, ';');) at.sql(statement);
  at.sql("commit");
}

void Session::sql(std::string& statement) {
  at.sql(statement);
}

void Session::screen(std::string& name) {
  if (!Forms::find(name)) new BlankScreen(name);
}

void Session::in(std::string& form) {
  form_ = form;
}

void Session::answer(std::string& text) {
  answers_.push_back(text);
}

void Session::leave(std::string& screen) {
  (screen.empty() ? QApplication::activeWindow() : Forms::find(screen))->close();
}

void Session::loop(std::string& step) {
  QTimer::singleShot(0, MenuF, [this, step] { perform(step); });
  const int status = QCoreApplication::exec();
  script_->say("ends with " + std::to_string(status));
}

void Session::filter(std::string& rest) {
  Dataset& rows = dataset(takeWord(rest));
  rows.FilterBy(rest);
}

void Session::locate(std::string& rest) {
  const auto parts = test::words(rest);
  dataset(parts.at(0)).Locate(parts.at(1), parts.at(2));
}

void Session::clock(std::string& text) {
  Clock::set([now = readDateTime(text)] { return now; });
}

QObject* Session::find(const std::string& name) const {
  const auto dot = name.find('.');
  const std::string form = dot == std::string::npos ? form_ : name.substr(0, dot);
  const std::string control = name.substr(dot + 1);
  if (dot == std::string::npos && Forms::find(name)) return Forms::find(name);
  if (QObject* found = Forms::control<QObject>(form, control.c_str())) return found;
  if (Forms::find(form))
    for (auto* tile : Forms::find(form)->findChildren<QAbstractButton*>())
      if (tile->text().toStdString() == control) return tile;
  throw std::runtime_error("there is no " + name);
}

Dataset& Session::dataset(const std::string& name) {
  if (Dataset* found = DM->Find(name)) return *found;
  throw std::runtime_error("there is no dataset " + name);
}

void Session::tap(std::string& name) {
  QObject* found = find(unquoted(name));
  if (auto* entry = dynamic_cast<QAction*>(found)) return entry->trigger();
  auto& widget = dynamic_cast<QWidget&>(*found);
  for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget())
    if (auto* area = dynamic_cast<QScrollArea*>(around)) area->ensureWidgetVisible(&widget);
  at.tap(&widget);
}

void Session::click(std::string& name) {
  control<Button>(name).Click();
}

void Session::type(std::string& text) {
  text = unquoted(text);
  std::string keys;
  for (std::size_t i = 0; i < text.size(); ++i) {
    constexpr std::string_view kLetters = "ntb", kKeys = "\n\t\b";
    const auto key = text[i] == '\\' ? kLetters.find(text[++i]) : std::string::npos;
    keys += key == std::string::npos ? text[i] : kKeys[key];
  }
  at.type(keys);
}

void Session::press(std::string& keys) {
  const QKeyCombination key = QKeySequence::fromString(QString::fromStdString(keys))[0];
  at.press(key.key(), key.keyboardModifiers());
}

void Session::set(std::string& rest) {
  auto& control = *find(takeWord(rest));
  if (auto* box = dynamic_cast<QAbstractButton*>(&control)) return box->setChecked(rest == "on");
  control.setProperty("text", QString::fromStdString(unquoted(rest)));
}

void Session::choose(std::string& rest) {
  QObject* list = find(takeWord(rest));
  if (auto* box = dynamic_cast<DBLookupListBox*>(list)) return box->Choose(rest);
  dynamic_cast<DBLookupComboBox&>(*list).Choose(rest);
}

void Session::focus(std::string&) {
  const QWidget* focused = QApplication::focusWidget();
  script_->say(focused ? focused->objectName().toStdString() : "(none)");
}

void Session::over(std::string& rest) {
  auto& input = control<QLineEdit>(takeWord(rest));
  at.tap(&input);
  input.selectAll();
  if (rest.empty()) at.press(Qt::Key_Delete);
  type(rest);
}

void Session::row(std::string& rest) {
  auto& view = control<QAbstractItemView>(takeWord(rest));
  at.settle();
  at.tapAt(view.viewport(), view.visualRect(view.model()->index(std::stoi(rest), 1)).center());
}

void Session::twice(std::string& rest) {
  auto& view = control<QAbstractItemView>(takeWord(rest));
  at.settle();
  at.doubleTapAt(view.viewport(), view.visualRect(view.model()->index(std::stoi(rest), 1)).center());
}

void Session::edit(std::string& rest) {
  Dataset& rows = dataset(takeWord(rest));
  rows.Edit();
  for (const std::string& assignment : test::words(rest)) {
    const auto equals = assignment.find('=');
    const std::string value = assignment.substr(equals + 1);
    rows[assignment.substr(0, equals)] = value == "null" ? Value() : Value(value);
  }
}

void playSession(test::Transcript& script) {
  Session().play(script);
}

}  // namespace tavoline
