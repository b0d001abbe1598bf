#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/PassingStore.h"
#include "support/Transcript.h"
#include "support/Workstation.h"

namespace tavoline {

/// The whole program, played by steps that are told in words: all screens, made as at the start, on a fresh
/// store. The clock stands at 14/07/2024 12:30:15.
///
/// A step says, in order: `says "..."` and `asks "..." -> Oui` for the boxes that it brings, its writes to
/// the store
/// (`+ table values`, `~ table.rid values`, `- table.rid`, `~ table` for a statement), `opens` and `closes`
/// for the screens. What a step does not say did not happen. The next step goes on in a modal screen that one
/// opens.
///
///     store FILE             SQL of a file beside the transcript, run on the side
///     sql STATEMENT          a statement on the side; `stored ...` says the rows of a select
///     start                  the program, up to its login; `login CODE PASSWORD` goes through that
///     screen NAME            a blank screen, where the program has none of this name yet
///     clock TEXT             sets it
///     picture FILE [W H]     makes a picture, or one that is broken
///     in SCREEN              where the controls of the steps are, unless told as SCREEN.CONTROL
///     tap CONTROL            a button, an entry of a menu, or a tile by its caption
///     type TEXT, press KEY   into what has the focus; \n is Return, \t Tab, \b backspace
///     set CONTROL TEXT       what the control holds, as any driver does; `over CONTROL TEXT` types over it
///     choose LIST KEY        a row of a look-up list
///     row GRID NUMBER        a click on a row, from 0
///     answer TEXT            to the next question or file box; a box without one is answered "Non"
///     leave [SCREEN]         closes a window, the one in front, by the window's own means
///     loop STEP              takes a step in the event loop that the process runs in, and says how that ends
///     show CONTROL...        what each holds, and its state; `disabled SCREEN` all that is disabled there;
///                            `focus` where the keyboard is
///     grid GRID, tiles PANEL their rows and tiles
///     data DATASET FIELD...  state and current row; `rows` the visible rows; `filters` all filters in force
///     reopen DATASET...      and insert, edit DATASET FIELD=VALUE..., post, cancel, first, last, locate,
///     filter
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

 private:
  class TellingStore;
  void listen();
  void run();
  void perform(std::string step);
  void tellScreens();
  std::string ask(const std::string& text);
  using Step = void(std::string& rest);
  Step file, sql, stored, start, login, screen, clock, in, tap, type, press, set, choose, focus, over, row,
      answer, leave, loop, show, disabled, picture, grid, tiles, data, rows, filters, filter, locate, edit;

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
