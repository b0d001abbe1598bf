#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/Transcript.h"

namespace tavoline::test {

/// What is told of a verb: its form, such as "tap CONTROL" or "A + B", and one line of help. In a form, words
/// in capitals are arguments and words in brackets may be left out; the first other word is the verb. What
/// stands before it is its subject.
struct VerbHelp {
  std::string form, help;
  std::string name() const;
  bool takesSubject() const { return !form.starts_with(name()); }
};

/// Makes the verbs of a room known to tellVerbs.
void registerVerbs(const std::string& room, const std::vector<VerbHelp>& verbs);
/// Prints the verbs of every room in this program, if `--verbs` stands on its command line.
bool tellVerbs(int argc, char** argv);

/// The verbs of one room, told to a `Player`. Each case has a player of its own, with a `subject`: what
/// stands before the verb of the step, or nothing.
template <class Player>
class Verbs {
 public:
  struct Verb {
    const char *form, *help;
    std::function<void(Player&, std::string& arguments)> play;
  };
  Verbs(const char* room, std::vector<Verb> verbs) : verbs_(std::move(verbs)) {
    for (const Verb& verb : verbs_) told_.push_back({verb.form, verb.help});
    registerVerbs(room, told_);
  }

  void perform(Player& player, std::string step) const {
    player.subject.clear();
    std::string word = takeWord(step);
    const Verb* verb = find(word, false);
    if (!verb) {
      player.subject = std::exchange(word, takeWord(step));
      verb = find(word, true);
    }
    if (!verb) throw std::runtime_error("no step begins so");
    verb->play(player, step);
  }

  /// Plays every case of some files, each by a player made of its transcript.
  bool registerTranscripts(const std::string& files) const {
    return test::registerTranscripts(files, [this](Transcript& script) {
      Player player(script);
      while (script.next()) script.attempt([&] { perform(player, script.step()); });
    });
  }

 private:
  const Verb* find(const std::string& word, bool behindSubject) const {
    for (std::size_t i = 0; i < told_.size(); ++i)
      if (told_[i].name() == word && (told_[i].takesSubject() || !behindSubject)) return &verbs_[i];
    return nullptr;
  }

  std::vector<Verb> verbs_;
  std::vector<VerbHelp> told_;
};

}  // namespace tavoline::test
