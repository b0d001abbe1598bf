#pragma once

#include <gmock/gmock.h>

#include <QtWidgets/QWidget>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/DMU.h"
#include "support/StoreFile.h"
#include "toolkit/forms/Forms.h"
#include "toolkit/forms/Messages.h"

namespace tavoline {

/// One workstation of a restaurant, played by a test: a store of its own in a passing folder that is the
/// working directory, the data module, the screens that the test asks for, and a user who taps, types and
/// answers boxes. Every box that the test did not foresee fails it with its text; so does a foreseen one that
/// never came.
class Workstation {
 public:
  /// Makes the store. Rows that are to be there at the start are put in by `sql`; then `start`.
  Workstation();
  /// Another one, at a store that stands in `folder` and stays there.
  explicit Workstation(const std::filesystem::path& folder);
  ~Workstation();
  Workstation(const Workstation&) = delete;
  Workstation& operator=(const Workstation&) = delete;

  /// Creates DM on the store, as at the start of the program, and binds the screens made before.
  void start();
  void start(std::shared_ptr<Store> store);  ///< On a store of the test's own making.
  /// Makes a screen, freed with the workstation; the second form stands it in its global, which must outlive
  /// this.
  template <class Screen>
  Screen& create() {
    return *new Screen;
  }
  template <class Screen>
  Screen& create(Screen*& instance) {
    instance = new Screen;
    forget_.push_back([&instance] { instance = nullptr; });
    return *instance;
  }

  /// What reached the store: runs SQL through a connection of its own; the rows as text, null as "".
  using Rows = std::vector<std::vector<std::string>>;
  Rows sql(const std::string& statement);
  std::string value(const std::string& statement);  ///< The first column of the first row; "" for none.

  /// A named control: "LoginF.RzEdit2". Fails the test if it is absent.
  template <class T = QWidget>
  T* control(std::string_view formAndControl) {
    QWidget* found = find(formAndControl);
    T* wanted = dynamic_cast<T*>(found);
    if (found && !wanted) ADD_FAILURE() << formAndControl << " is of another kind";
    return wanted;
  }
  std::string text(std::string_view formAndControl);  ///< Its `text`, as any driver reads it.

  /// Presses the middle of a control like a finger. Fails the test where a finger could not: hidden,
  /// disabled, covered, or behind a modal screen.
  void tap(QWidget* control);
  void tap(std::string_view formAndControl) { tap(find(formAndControl)); }
  void tapAt(QWidget* control, QPoint place);
  void doubleTapAt(QWidget* control, QPoint place);
  /// Types into what has the focus: '\n' is Return, '\t' Tab, '\b' backspace.
  void type(std::string_view text);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  void settle();  ///< Lets the event loop come round until nothing waits.
  void waitUntil(const std::function<bool()>& condition);
  /// Runs `action`, which opens a modal screen, and `inModal` once that is open. Fails if none opens, or if
  /// it is still open after `inModal`.
  void during(const std::function<void()>& action, const std::function<void()>& inModal);

  /// A box that will come, and what the user does: "OK", "Oui", "Non", or the path that he chooses in a file
  /// box.
  struct Answer {
    testing::Matcher<std::string> to;
    std::string with = "OK";
  };
  /// The boxes of the steps that follow, in order. A file box is known by its title; choosing a picture by
  /// "image".
  void answers(std::vector<Answer> expected);

  const std::filesystem::path& folder() const { return folder_; }

 private:
  QWidget* find(std::string_view formAndControl);
  std::string answer(const std::string& text);
  bool reachable(QWidget* control, QPoint place);
  void settleIn();

  std::optional<test::TemporaryFolder> own_;
  std::filesystem::path folder_, before_ = std::filesystem::current_path();
  std::optional<sqlite::Connection> door_;
  std::vector<std::function<void()>> forget_;
  std::deque<Answer> expected_;
};

}  // namespace tavoline
