#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/PassingStore.h"
#include "support/Verbs.h"
#include "support/Workstation.h"

namespace tavoline {

/// The whole program, played by steps that are told in words: all screens, made as at the start, on a fresh
/// store. The clock stands at 14/07/2024 12:30:15.
///
/// A step says, in order: `says "..."` and `asks "..." -> Oui` for the boxes that it brings, its writes to
/// the store (`+ table values`, `~ table.rid values`, `- table.rid`, `~ table` for a statement), `opens` and
/// `closes` for the screens. What a step does not say did not happen. The next step goes on in a modal screen
/// that one opens.
class Session {
 public:
  Session();
  /// Another workstation, at a store that stands in `folder` and stays there.
  explicit Session(const std::filesystem::path& folder);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void play(test::Transcript& script);
  /// Plays some steps, a line each, and gives what they say; one line each, without the steps.
  std::string play(const std::string& steps);

  std::function<void()> beforeWrite, afterWrite;  ///< Around one that the store accepts.
  Workstation at;
  std::string subject;  ///< No step of a session has one.

 private:
  class TellingStore;
  void listen();
  void run();
  void perform(const std::string& step);
  void tellScreens();
  std::string ask(const std::string& text);
  static const test::Verbs<Session> kVerbs;
  static std::function<void(Session&, std::string&)> operation(void (Dataset::*does)());
  using Step = void(std::string& rest);
  Step file, sql, stored, start, login, screen, clock, in, tap, type, press, set, choose, focus, over, row,
      twice, answer, leave, loop, show, disabled, picture, grid, tiles, data, rows, filters, filter, locate,
      edit, pages, click, make, hear, arrive, quietly;

  QObject* find(const std::string& name) const;
  template <class T>
  T& control(const std::string& name) const {
    if (auto* wanted = dynamic_cast<T*>(find(name))) return *wanted;
    throw std::runtime_error(name + " is of another kind");
  }
  static Dataset& dataset(const std::string& name);
  static std::string told(const Value& value);

  test::Transcript* script_ = nullptr;  // none between the steps
  Messages messages_;
  std::string form_ = "MenuF";
  std::set<std::string> open_;
  std::vector<QWidget*> modals_;
  std::deque<std::string> answers_;
};

/// Plays a transcript in a session of its own.
void playSession(test::Transcript& script);

}  // namespace tavoline
