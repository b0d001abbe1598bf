#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavoline::test {

/// One case of a text file: steps, and behind each step, or indented beneath it, what it says.
///
///     a step that every case begins with
///     == a title, which names the test
///     # a comment
///     a step -> what it says; what it says next
///     a step that says nothing then another -> what that says
///     a step; behind a backslash it goes on in the next line
///       what it says, a line each
///
/// Whoever plays it takes the steps in turn and says what comes of each; the case passes if that reads like
/// the file. The steps are made of verbs (Verbs.h).
class Transcript {
 public:
  struct Step {
    std::string text, expected, said;
  };
  Transcript(std::string file, std::vector<Step> steps);

  bool next();  ///< Goes to the next step; false behind the last one.
  const std::string& step() const { return steps_[at_ - 1].text; }
  void say(const std::string& line);          ///< What the step says; lines of a text are lines here.
  std::size_t at() const { return at_ - 1; }  ///< The number of the step, from 0.
  /// Takes back those lines of what a step has said.
  void forget(std::size_t step, const std::function<bool(const std::string& line)>& which);
  /// For steps that fail: the sentence of what is thrown, behind "! ".
  void attempt(const std::function<void()>& action);

  const std::string& file() const { return file_; }
  const std::vector<Step>& steps() const { return steps_; }
  bool over() const { return at_ == steps_.size(); }  ///< Whether every step was taken.

 private:
  std::string file_;
  std::vector<Step> steps_;
  std::size_t at_ = 0;
};

/// Makes every case of some files, blanks between them, a test of its own, played by `play`; `on` stands
/// before their names. With TAVOLINE_ACCEPT in the environment, what a case says otherwise than expected is
/// written into its file.
bool registerTranscripts(const std::string& files, const std::function<void(Transcript&)>& play,
                         const std::string& on = {});

/// Plays some steps, a line each, and gives what they say, one line each.
std::string answers(const std::string& steps, const std::function<void(Transcript&)>& play);

/// The words of a text, blanks between them; one in double quotes may hold blanks.
std::vector<std::string> words(const std::string& text);
/// The first word of a text, which is taken off it.
std::string takeWord(std::string& text);

}  // namespace tavoline::test
