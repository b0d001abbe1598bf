#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavoline::test {

/// One case of a text file: steps, and indented beneath each step what it says.
///
///     a step that every case begins with
///     == a title, which names the test
///     # a comment
///     a step; behind a backslash it goes on in the next line
///       what it says, a line each
///
/// Whoever plays it takes the steps in turn and says what comes of each; the case passes if that reads like
/// the file.
class Transcript {
 public:
  Transcript(std::string file, std::vector<std::string> lines);

  bool next();  ///< Goes to the next step; false behind the last one.
  const std::string& step() const { return steps_[at_ - 1]; }
  void say(const std::string& line);  ///< What the step says; lines of a text are lines here.
  /// For steps that fail: the sentence of what is thrown, behind "! ".
  void attempt(const std::function<void()>& action);

  const std::string& file() const { return file_; }
  std::string expected() const;
  std::string said() const { return said_; }

 private:
  std::string file_;
  std::vector<std::string> lines_, steps_;
  std::size_t at_ = 0;
  std::string said_;
};

/// Makes every case of some files, blanks between them, a test of its own, played by `play`.
bool registerTranscripts(const std::string& files, const std::function<void(Transcript&)>& play);

/// Plays some steps, a line each, and gives what they say, one line each.
std::string answers(const std::string& steps, const std::function<void(Transcript&)>& play);

/// The words of a text, blanks between them; one in double quotes may hold blanks.
std::vector<std::string> words(const std::string& text);
/// The first word of a text, which is taken off it.
std::string takeWord(std::string& text);

}  // namespace tavoline::test
